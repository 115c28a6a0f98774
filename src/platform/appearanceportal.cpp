#include "appearanceportal.h"

#include "core/logmanager.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>

namespace {
constexpr int readTimeoutMilliseconds = 1000;

// Read answers a variant that holds the value as a variant again; unwrap as deep as it goes.
QVariant unwrap(QVariant value)
{
    while (value.userType() == qMetaTypeId<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}
} // namespace

struct AppearancePortal::Private
{
    bool dark = false;
};

AppearancePortal* AppearancePortal::instance()
{
    static AppearancePortal* const portal = new AppearancePortal(QDBusConnection::sessionBus());
    return portal;
}

AppearancePortal::AppearancePortal(const QDBusConnection& bus, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    if (!bus.isConnected())
        return;
    QDBusConnection connection(bus);
    connection.connect(QString::fromLatin1(serviceName), QString::fromLatin1(objectPath),
                       QString::fromLatin1(interfaceName), QStringLiteral("SettingChanged"), this,
                       SLOT(handleSettingChanged(QString, QString, QDBusVariant)));

    QDBusMessage read =
        QDBusMessage::createMethodCall(QString::fromLatin1(serviceName), QString::fromLatin1(objectPath),
                                       QString::fromLatin1(interfaceName), QStringLiteral("Read"));
    read << QString::fromLatin1(appearanceNamespace) << QString::fromLatin1(colorSchemeKey);
    const QDBusMessage reply = connection.call(read, QDBus::Block, readTimeoutMilliseconds);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        QLOG_INFO() << "No appearance portal found, the system theme counts as light";
        return;
    }
    d->dark = unwrap(reply.arguments().constFirst()).toUInt() == preferDark;
}

AppearancePortal::~AppearancePortal() = default;

bool AppearancePortal::isDark() const
{
    return d->dark;
}

void AppearancePortal::handleSettingChanged(const QString& settingNamespace, const QString& key,
                                            const QDBusVariant& value)
{
    if (settingNamespace != QLatin1String(appearanceNamespace) || key != QLatin1String(colorSchemeKey))
        return;
    const bool dark = unwrap(value.variant()).toUInt() == preferDark;
    if (dark == d->dark)
        return;
    d->dark = dark;
    emit darkChanged(dark);
}

#include "desktopnotifications.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QHash>
#include <QStringList>
#include <QVariantMap>

namespace {
// A reminder stays on screen until the user answers it.
constexpr int neverExpires = 0;
} // namespace

struct DesktopNotifications::Private
{
    explicit Private(const QDBusConnection& bus)
        : bus(bus)
    {}

    QDBusMessage methodCall(const QString& method) const
    {
        return QDBusMessage::createMethodCall(QLatin1String(serviceName), QLatin1String(objectPath),
                                              QLatin1String(interfaceName), method);
    }

    QDBusConnection bus;
    // The service's number of each shown notification, with the caller's key. The service's signals
    // reach every listener on the bus, so numbers not in here belong to other programs.
    QHash<uint, QString> keys;
};

DesktopNotifications::DesktopNotifications(QObject* parent)
    : DesktopNotifications(QDBusConnection::sessionBus(), parent)
{}

DesktopNotifications::DesktopNotifications(const QDBusConnection& bus, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(bus))
{
    if (!bus.isConnected())
        return;
    const QString service = QLatin1String(serviceName);
    const QString path = QLatin1String(objectPath);
    const QString interface = QLatin1String(interfaceName);
    d->bus.connect(service, path, interface, QStringLiteral("ActionInvoked"), this,
                   SLOT(handleActionInvoked(uint, QString)));
    d->bus.connect(service, path, interface, QStringLiteral("NotificationClosed"), this,
                   SLOT(handleNotificationClosed(uint, uint)));
}

DesktopNotifications::~DesktopNotifications() = default;

void DesktopNotifications::show(const QString& key, const QString& title, const QString& text,
                                const QString& actionTitle)
{
    if (!d->bus.isConnected()) {
        emit showFailed(key, QStringLiteral("no session bus"));
        return;
    }
    const QStringList actions{QLatin1String(defaultActionKey), title, QLatin1String(actionKey), actionTitle};
    const QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("norvel")},
                            {QStringLiteral("sound-name"), QStringLiteral("message-new-instant")},
                            {QStringLiteral("urgency"), QVariant::fromValue<uchar>(1)}};
    QDBusMessage notify = d->methodCall(QStringLiteral("Notify"));
    notify << QCoreApplication::applicationName() << 0u << QStringLiteral("norvel") << title << text
           << actions << hints << neverExpires;
    auto* watcher = new QDBusPendingCallWatcher(d->bus.asyncCall(notify), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, key](QDBusPendingCallWatcher* call) {
        const QDBusPendingReply<uint> reply = *call;
        call->deleteLater();
        if (reply.isError())
            emit showFailed(key, reply.error().message());
        else
            d->keys.insert(reply.value(), key);
    });
}

void DesktopNotifications::close(const QString& key)
{
    for (const uint id : d->keys.keys(key)) {
        QDBusMessage closeNotification = d->methodCall(QStringLiteral("CloseNotification"));
        d->bus.asyncCall(closeNotification << id);
    }
}

void DesktopNotifications::handleActionInvoked(uint id, const QString& action)
{
    const auto key = d->keys.constFind(id);
    if (key == d->keys.cend())
        return;
    emit actionInvoked(*key, action == QLatin1String(actionKey));
}

void DesktopNotifications::handleNotificationClosed(uint id, uint /*reason*/)
{
    const QString key = d->keys.take(id);
    if (!key.isEmpty())
        emit closed(key);
}

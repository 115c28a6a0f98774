#include "launcherbadge.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

struct LauncherBadge::Private
{
    explicit Private(const QDBusConnection& connection)
        : connection(connection)
    {}

    QDBusConnection connection;
};

LauncherBadge::LauncherBadge(QObject* parent)
    : LauncherBadge(QDBusConnection::sessionBus(), parent)
{}

LauncherBadge::LauncherBadge(const QDBusConnection& connection, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(connection))
{}

LauncherBadge::~LauncherBadge() = default;

bool LauncherBadge::setCount(int count)
{
    if (!d->connection.isConnected())
        return false;
    QDBusMessage update = QDBusMessage::createSignal(QLatin1String(objectPath), QLatin1String(interfaceName),
                                                     QLatin1String(signalName));
    const QVariantMap properties{{QStringLiteral("count"), QVariant::fromValue<qint64>(count)},
                                 {QStringLiteral("count-visible"), count > 0}};
    update << QLatin1String(applicationUri) << properties;
    return d->connection.send(update);
}

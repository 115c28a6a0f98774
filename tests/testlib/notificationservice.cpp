#include "notificationservice.h"

#include <QAtomicInt>
#include <QDBusMessage>

namespace {
const QString serviceName = QStringLiteral("org.freedesktop.Notifications");
const QString objectPath = QStringLiteral("/org/freedesktop/Notifications");

QString nextConnectionName()
{
    static QAtomicInt counter;
    return QStringLiteral("notification-service-%1").arg(counter.fetchAndAddRelaxed(1));
}
} // namespace

NotificationService::NotificationService(const QString& busAddress)
    : m_connection(QDBusConnection::connectToBus(busAddress, nextConnectionName()))
{
    m_registered = m_connection.registerObject(objectPath, this, QDBusConnection::ExportAllSlots) &&
                   m_connection.registerService(serviceName);
}

NotificationService::~NotificationService()
{
    QDBusConnection::disconnectFromBus(m_connection.name());
}

bool NotificationService::invokeAction(uint id, const QString& action)
{
    const uint dismissedByUser = 2;
    QDBusMessage invoked =
        QDBusMessage::createSignal(objectPath, serviceName, QStringLiteral("ActionInvoked"));
    QDBusMessage closed =
        QDBusMessage::createSignal(objectPath, serviceName, QStringLiteral("NotificationClosed"));
    return m_connection.send(invoked << id << action) && m_connection.send(closed << id << dismissedByUser);
}

uint NotificationService::Notify(const QString& applicationName, uint /*replacesId*/, const QString& /*icon*/,
                                 const QString& title, const QString& text, const QStringList& actions,
                                 const QVariantMap& /*hints*/, int /*timeout*/)
{
    // Numbers start high, so that a client mixing them up with list positions is caught.
    const uint id = 100 + uint(m_notifications.size());
    m_notifications.append({id, QStringList{applicationName, title, text} + actions});
    return id;
}

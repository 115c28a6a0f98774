#include "notificationservice.h"

#include <QAtomicInt>
#include <QDBusMessage>

namespace {
const QString serviceName = QStringLiteral("org.freedesktop.Notifications");
const QString objectPath = QStringLiteral("/org/freedesktop/Notifications");
constexpr uint dismissedByUser = 2;

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
    m_connection.unregisterService(serviceName);
    QDBusConnection::disconnectFromBus(m_connection.name());
}

bool NotificationService::invokeAction(uint id, const QString& action)
{
    return sendSignal(QStringLiteral("ActionInvoked"), {id, action}) &&
           sendSignal(QStringLiteral("NotificationClosed"), {id, dismissedByUser});
}

uint NotificationService::Notify(const QString& applicationName, uint /*replacesId*/, const QString& icon,
                                 const QString& title, const QString& text, const QStringList& actions,
                                 const QVariantMap& /*hints*/, int timeout)
{
    // Numbers start high, so that a client mixing them up with list positions is caught.
    const uint id = 100 + uint(m_notifications.size());
    m_notifications.append({id, applicationName, icon, title, text, actions, timeout});
    emit notified();
    return id;
}

void NotificationService::CloseNotification(uint /*id*/) {}

QStringList NotificationService::GetCapabilities()
{
    return {QStringLiteral("actions"), QStringLiteral("body")};
}

bool NotificationService::sendSignal(const QString& name, const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createSignal(objectPath, serviceName, name);
    message.setArguments(arguments);
    return m_connection.send(message);
}

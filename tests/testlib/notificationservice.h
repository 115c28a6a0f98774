#pragma once

#include <QDBusConnection>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

// A freedesktop notification service on a test's bus: it records every Notify call and answers as
// the desktop does when the user presses a button.
class NotificationService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Notification
    {
        uint id;
        // Application name, title and text, then the actions.
        QStringList fields;
    };

    explicit NotificationService(const QString& busAddress);
    ~NotificationService() override;

    bool isRegistered() const { return m_registered; }
    QList<Notification> notifications() const { return m_notifications; }
    // ActionInvoked for the notification, then NotificationClosed.
    bool invokeAction(uint id, const QString& action);

public slots:
    // Public only because the bus calls public slots alone.
    uint Notify(const QString& applicationName, uint replacesId, const QString& icon, const QString& title,
                const QString& text, const QStringList& actions, const QVariantMap& hints, int timeout);

private:
    QDBusConnection m_connection;
    bool m_registered = false;
    QList<Notification> m_notifications;
};

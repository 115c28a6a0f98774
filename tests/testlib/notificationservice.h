#pragma once

#include <QDBusConnection>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

// A freedesktop notification service on a test's bus: it records every Notify call and can answer
// as the desktop would when the user presses a button.
class NotificationService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Notification
    {
        uint id;
        QString applicationName;
        QString icon;
        QString title;
        QString text;
        QStringList actions;
        int timeout;
    };

    explicit NotificationService(const QString& busAddress);
    ~NotificationService() override;

    bool isRegistered() const { return m_registered; }
    QList<Notification> notifications() const { return m_notifications; }
    // Sends ActionInvoked for the notification, then closes it as the desktop does.
    bool invokeAction(uint id, const QString& action);

public slots:
    // The bus calls these; they are public only because it reaches public slots alone.
    uint Notify(const QString& applicationName, uint replacesId, const QString& icon, const QString& title,
                const QString& text, const QStringList& actions, const QVariantMap& hints, int timeout);
    void CloseNotification(uint id);
    QStringList GetCapabilities();

signals:
    void notified();

private:
    bool sendSignal(const QString& name, const QVariantList& arguments);

    QDBusConnection m_connection;
    bool m_registered = false;
    QList<Notification> m_notifications;
};

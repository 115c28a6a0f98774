#pragma once

#include <QObject>
#include <QString>

#include <memory>

class QDBusConnection;

// Shows notifications through the freedesktop notification service (org.freedesktop.Notifications)
// and reports what the user does with them. Each notification is named by a key of the caller's;
// the service's own numbers stay in here.
class DesktopNotifications : public QObject
{
    Q_OBJECT

public:
    static constexpr const char* serviceName = "org.freedesktop.Notifications";
    static constexpr const char* objectPath = "/org/freedesktop/Notifications";
    static constexpr const char* interfaceName = "org.freedesktop.Notifications";
    static constexpr const char* actionKey = "snooze";
    static constexpr const char* defaultActionKey = "default";

    // Talks to the service on the session bus.
    explicit DesktopNotifications(QObject* parent = nullptr);
    // Without a connected bus every show fails, with no other effect.
    explicit DesktopNotifications(const QDBusConnection& bus, QObject* parent = nullptr);
    ~DesktopNotifications() override;

    // Asks the service to show a notification with an action button and a default action; answers
    // with showFailed when there is no bus or no service.
    void show(const QString& key, const QString& title, const QString& text, const QString& actionTitle);
    // Takes every notification shown under key off the screen.
    void close(const QString& key);

signals:
    void showFailed(const QString& key, const QString& error);
    // actionButton tells the action button from a click on the notification itself.
    void actionInvoked(const QString& key, bool actionButton);
    void closed(const QString& key);

private slots:
    void handleActionInvoked(uint id, const QString& action);
    void handleNotificationClosed(uint id, uint reason);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

#pragma once

#include "reminders/usernotification.h"

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

class DesktopNotifications;

// The desktop side of the reminders. A notification service shows a notification at once and holds
// no scheduled ones, so the schedule is kept here: in a file of its own, written at every change and
// read at start, with one timer armed for the earliest moment. A moment missed while the program was
// not running is delivered at the next start, once; one missed by more than a day is dropped.
class NotificationManagerPrivate : public QObject
{
    Q_OBJECT

public:
    static constexpr const char* fileName = "scheduled_reminders.dat";
    static constexpr qint64 maxLatenessSeconds = 86400;

    // Keeps the schedule in filePath and takes over desktop, which shows the notifications.
    NotificationManagerPrivate(const QString& filePath, DesktopNotifications* desktop,
                               QObject* parent = nullptr);
    ~NotificationManagerPrivate() override;

    QList<UserNotification> scheduledNotifications() const;
    // Replaces a scheduled notification with the same identifier.
    void scheduleNotification(const UserNotification& notification);
    void removeScheduledNotification(const QString& identifier);
    void removeAllScheduledNotifications();
    // Takes a shown notification off the desktop.
    void removeDeliveredNotification(const QString& identifier);

public slots:
    // Measures the wait for the next moment anew, after the machine slept or the clock was set;
    // whatever is due by now is delivered.
    void restartTimer();

signals:
    // The user pressed the action button (snooze), or clicked the notification itself.
    void activated(const UserNotification& notification, bool actionButton);

private:
    void deliverDueNotifications();
    void deliver(const UserNotification& notification);
    void handleActionInvoked(const QString& identifier, bool actionButton);

    struct Private;
    std::unique_ptr<Private> d;
};

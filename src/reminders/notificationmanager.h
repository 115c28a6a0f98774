#pragma once

#include "store/dataobject.h"

#include <QList>
#include <QObject>
#include <QPair>
#include <QStringList>
#include <QVariantMap>

#include <memory>

class NotificationManagerPrivate;
class RepeatedTaskHelper;
struct UserNotification;

// Reminders for tasks: schedules them with the desktop's notification side and answers what is
// scheduled. Everything needed later is packed into each notification's identifier (see
// NotificationHelper). Lives on the database thread; the interface reaches it through DataManager.
class NotificationManager : public QObject
{
    Q_OBJECT

public:
    enum NotificationType {
        AtTimeOfEvent = 0,
        FiveMinutes = 1,
        FifteenMinutes = 2,
        ThirtyMinutes = 3,
        Hour = 4,
        TwoHours = 5,
        ThreeHours = 6,
        Day = 7,
        TwoDays = 8
    };
    Q_ENUM(NotificationType)

    static constexpr int snoozeSeconds = 900;

    // The program's manager, delivering on the session bus and keeping its schedule in the data
    // directory. First called by the database thread's worker as it starts, so that it lives there.
    static NotificationManager* instance();
    // Takes over platform; repeatedTasks gives the kept wishes of repeating tasks.
    NotificationManager(NotificationManagerPrivate* platform, RepeatedTaskHelper* repeatedTasks,
                        QObject* parent = nullptr);
    ~NotificationManager() override;

public slots:
    int notificationCount();
    QStringList notificationIds();
    // No name or no valid date, no notification. Moments in the past are the caller's business.
    void scheduleNotification(const QVariantMap& taskInfo, NotificationManager::NotificationType type);
    // Moves the reminders of oldTask to the dates of newTask; those now in the past are dropped.
    void rescheduleReminders(const DOTask& oldTask, const DOTask& newTask);
    void removeScheduledNotification(const QVariantMap& taskInfo, NotificationManager::NotificationType type);
    void removeAllNotificationsById(const QString& taskId);
    bool hasScheduledNotification(const QVariantMap& taskInfo, NotificationManager::NotificationType type);
    bool hasScheduledNotifications(const QString& taskId);
    void clearAll();
    // Timers stand still while the machine sleeps: the next reminder is measured anew.
    void handleComputerWokeUp();

signals:
    void taskRequested(const QString& taskId);
    // A click on a reminder that names no task still brings the window up.
    void mainWindowRequested();

private:
    void handleActivation(const UserNotification& notification, bool actionButton);
    void keepWishes(const DOTask& oldTask, const DOTask& newTask, bool start,
                    QList<QPair<QVariantMap, NotificationType>>* kept);

    struct Private;
    std::unique_ptr<Private> d;
};

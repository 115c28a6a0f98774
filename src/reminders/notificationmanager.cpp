#include "notificationmanager.h"

#include "core/clock.h"
#include "core/startup.h"
#include "platform/desktopnotifications.h"
#include "platform/systemclockmonitor.h"
#include "reminders/notificationhelper.h"
#include "reminders/notificationmanagerprivate.h"
#include "services/repeatedtaskhelper.h"
#include "store/objectkeys.h"

#include <QLocale>
#include <QPair>

namespace {

using Reminder = QPair<QVariantMap, NotificationManager::NotificationType>;

QString actionButtonTitle()
{
    return QLocale::system().name() == QLatin1String("ru_RU") ? QStringLiteral("Отложить")
                                                              : QStringLiteral("Snooze");
}

// The task id of a notification identifier, or empty when the identifier is not one of ours.
QString taskIdOf(const QString& identifier)
{
    const QStringList parts = identifier.split(QLatin1Char('_'));
    return parts.size() == 3 ? parts.first() : QString();
}
} // namespace

struct NotificationManager::Private
{
    NotificationManagerPrivate* platform = nullptr;
    RepeatedTaskHelper* repeatedTasks = nullptr;
};

NotificationManager* NotificationManager::instance()
{
    static NotificationManager* const manager = [] {
        const QString filePath = Startup::dataFilePath(QLatin1String(NotificationManagerPrivate::fileName));
        auto* platform = new NotificationManagerPrivate(filePath, new DesktopNotifications);
        auto* clock = new SystemClockMonitor(platform);
        connect(clock, &SystemClockMonitor::clockChanged, platform,
                &NotificationManagerPrivate::restartTimer);
        return new NotificationManager(platform, RepeatedTaskHelper::instance());
    }();
    return manager;
}

NotificationManager::NotificationManager(NotificationManagerPrivate* platform,
                                         RepeatedTaskHelper* repeatedTasks, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->platform = platform;
    d->repeatedTasks = repeatedTasks;
    platform->setParent(this);
    connect(platform, &NotificationManagerPrivate::activated, this, &NotificationManager::handleActivation);
}

NotificationManager::~NotificationManager() = default;

int NotificationManager::notificationCount()
{
    return d->platform->scheduledNotifications().size();
}

QStringList NotificationManager::notificationIds()
{
    QStringList ids;
    for (const UserNotification& notification : d->platform->scheduledNotifications())
        ids.append(notification.identifier);
    return ids;
}

void NotificationManager::scheduleNotification(const QVariantMap& taskInfo, NotificationType type)
{
    const QString name = taskInfo.value(nameKey).toString();
    if (name.isEmpty())
        return;
    const QString identifier = NotificationHelper::generateNotificationId(taskInfo, type);
    if (identifier.isEmpty())
        return;
    const bool isStart = NotificationHelper::isStartReminder(taskInfo);
    d->platform->scheduleNotification(
        {identifier, name, NotificationHelper::getTextByNotificationType(isStart, type),
         NotificationHelper::deliveryDateTime(taskInfo, type), actionButtonTitle()});
}

void NotificationManager::rescheduleReminders(const DOTask& oldTask, const DOTask& newTask)
{
    const QString id = oldTask.value(idKey).toString();
    if (id.isEmpty())
        return;
    QList<Reminder> kept;
    keepWishes(oldTask, newTask, true, &kept);
    keepWishes(oldTask, newTask, false, &kept);
    removeAllNotificationsById(id);
    const QDateTime now = Clock::currentDateTime();
    for (const Reminder& reminder : qAsConst(kept)) {
        const QDateTime moment = NotificationHelper::deliveryDateTime(reminder.first, reminder.second);
        if (moment.isValid() && moment >= now)
            scheduleNotification(reminder.first, reminder.second);
    }
}

// A reminder moves with its task when it is scheduled, or when the task repeats and wishes for it.
void NotificationManager::keepWishes(const DOTask& oldTask, const DOTask& newTask, bool start,
                                     QList<Reminder>* kept)
{
    const QString taskKey = start ? QStringLiteral("START") : QStringLiteral("DUE");
    const QString reminderKey = start ? QStringLiteral("STARTDATE") : QStringLiteral("DUEDATE");
    const QDateTime oldDate = oldTask.value(taskKey).toDateTime();
    if (oldDate.isNull())
        return;
    const QString id = oldTask.value(idKey).toString();
    for (int value = AtTimeOfEvent; value <= TwoDays; ++value) {
        const auto type = static_cast<NotificationType>(value);
        const bool wished = start ? d->repeatedTasks->hasStartDateReminder(id, type)
                                  : d->repeatedTasks->hasDueDateReminder(id, type);
        if (wished || hasScheduledNotification({{idKey, id}, {reminderKey, oldDate}}, type)) {
            kept->append(
                {{{idKey, id}, {nameKey, newTask.value(nameKey)}, {reminderKey, newTask.value(taskKey)}},
                 type});
        }
    }
}

void NotificationManager::removeScheduledNotification(const QVariantMap& taskInfo, NotificationType type)
{
    const QString identifier = NotificationHelper::generateNotificationId(taskInfo, type);
    if (!identifier.isEmpty())
        d->platform->removeScheduledNotification(identifier);
}

void NotificationManager::removeAllNotificationsById(const QString& taskId)
{
    if (taskId.isEmpty())
        return;
    for (const QString& identifier : notificationIds()) {
        if (identifier.contains(taskId))
            d->platform->removeScheduledNotification(identifier);
    }
}

bool NotificationManager::hasScheduledNotification(const QVariantMap& taskInfo, NotificationType type)
{
    const QString identifier = NotificationHelper::generateNotificationId(taskInfo, type);
    return !identifier.isEmpty() && notificationIds().contains(identifier);
}

bool NotificationManager::hasScheduledNotifications(const QString& taskId)
{
    if (taskId.isEmpty())
        return false;
    const QStringList ids = notificationIds();
    return std::any_of(ids.cbegin(), ids.cend(),
                       [&](const QString& identifier) { return identifier.contains(taskId); });
}

void NotificationManager::clearAll()
{
    d->platform->removeAllScheduledNotifications();
}

void NotificationManager::handleComputerWokeUp()
{
    d->platform->restartTimer();
}

void NotificationManager::handleActivation(const UserNotification& notification, bool actionButton)
{
    d->platform->removeDeliveredNotification(notification.identifier);
    if (actionButton) {
        UserNotification snoozed = notification;
        snoozed.informativeText = QObject::tr("Don't forget about this task");
        snoozed.deliveryDateTime = Clock::currentDateTime().addSecs(snoozeSeconds);
        d->platform->scheduleNotification(snoozed);
        return;
    }
    emit mainWindowRequested();
    const QString taskId = taskIdOf(notification.identifier);
    if (!taskId.isEmpty())
        emit taskRequested(taskId);
}

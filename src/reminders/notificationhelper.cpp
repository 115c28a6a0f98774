#include "notificationhelper.h"

#include "store/objectkeys.h"

#include <QObject>

namespace {
const QString startDateKey = QStringLiteral("STARTDATE");
const QString dueDateKey = QStringLiteral("DUEDATE");

struct TypeInfo
{
    NotificationManager::NotificationType type;
    int leadSeconds;
    int leadDays;
    const char* wording;
};

// The lead of each type before its event, and how the editor words it.
const TypeInfo typeInfos[] = {
    {NotificationManager::FiveMinutes, 300, 0, QT_TRANSLATE_NOOP("QObject", "5 minutes")},
    {NotificationManager::FifteenMinutes, 900, 0, QT_TRANSLATE_NOOP("QObject", "15 minutes")},
    {NotificationManager::ThirtyMinutes, 1800, 0, QT_TRANSLATE_NOOP("QObject", "30 minutes")},
    {NotificationManager::Hour, 3600, 0, QT_TRANSLATE_NOOP("QObject", "1 hour")},
    {NotificationManager::TwoHours, 7200, 0, QT_TRANSLATE_NOOP("QObject", "2 hours")},
    {NotificationManager::ThreeHours, 10800, 0, QT_TRANSLATE_NOOP("QObject", "3 hours")},
    {NotificationManager::Day, 86400, 1, QT_TRANSLATE_NOOP("QObject", "1 day")},
    {NotificationManager::TwoDays, 172800, 2, QT_TRANSLATE_NOOP("QObject", "2 days")},
};

const TypeInfo* typeInfo(NotificationManager::NotificationType type)
{
    for (const TypeInfo& info : typeInfos) {
        if (info.type == type)
            return &info;
    }
    return nullptr;
}
} // namespace

QString NotificationHelper::generateNotificationId(const QVariantMap& taskInfo,
                                                   NotificationManager::NotificationType type)
{
    const QString taskId = taskInfo.value(idKey).toString();
    const QDateTime delivery = deliveryDateTime(taskInfo, type);
    if (taskId.isEmpty() || !delivery.isValid())
        return QString();
    return taskId + QLatin1Char('_') + (isStartReminder(taskInfo) ? startDateKey : dueDateKey) +
           QLatin1Char('_') + QString::number(delivery.toMSecsSinceEpoch());
}

QDateTime NotificationHelper::convertFromUtcToLocal(const QDateTime& dateTime)
{
    const QDateTime utc = dateTime.toTimeSpec(Qt::UTC);
    return QDateTime(utc.date(), utc.time(), Qt::LocalTime);
}

QDateTime
NotificationHelper::getModifiedDateTimeByNotificationType(const QDateTime& dateTime,
                                                          NotificationManager::NotificationType type)
{
    const TypeInfo* info = typeInfo(type);
    if (!info)
        return dateTime;
    // Day leads go by the calendar, so that a reminder a day ahead keeps its hour across a clock change.
    if (info->leadDays > 0)
        return dateTime.addDays(-info->leadDays);
    return dateTime.addSecs(-info->leadSeconds);
}

QString NotificationHelper::getTextByNotificationType(bool isStart,
                                                      NotificationManager::NotificationType type)
{
    if (type == NotificationManager::AtTimeOfEvent)
        return isStart ? QObject::tr("Task is active") : QObject::tr("Task is overdue");
    const TypeInfo* info = typeInfo(type);
    if (!info)
        return QString();
    const QString wording = QObject::tr(info->wording);
    return isStart ? QObject::tr("%1 before start").arg(wording)
                   : QObject::tr("%1 before deadline").arg(wording);
}

NotificationManager::NotificationType NotificationHelper::convertToTypeFromSecs(int seconds)
{
    for (const TypeInfo& info : typeInfos) {
        if (info.leadSeconds == seconds)
            return info.type;
    }
    return NotificationManager::AtTimeOfEvent;
}

QDateTime NotificationHelper::deliveryDateTime(const QVariantMap& taskInfo,
                                               NotificationManager::NotificationType type)
{
    const QDateTime date = taskInfo.value(isStartReminder(taskInfo) ? startDateKey : dueDateKey).toDateTime();
    if (!date.isValid())
        return QDateTime();
    return getModifiedDateTimeByNotificationType(convertFromUtcToLocal(date), type);
}

bool NotificationHelper::isStartReminder(const QVariantMap& taskInfo)
{
    return taskInfo.contains(startDateKey);
}

#pragma once

#include "reminders/notificationmanager.h"

#include <QDateTime>
#include <QString>
#include <QVariantMap>

// The arithmetic and wording of reminders, shared by the scheduler, the task editor and the sync.
class NotificationHelper
{
public:
    // "<task id>_STARTDATE_<ms>" or "<task id>_DUEDATE_<ms>", the milliseconds since 1970 of the moment
    // of delivery; empty without an id or a valid date.
    static QString generateNotificationId(const QVariantMap& taskInfo,
                                          NotificationManager::NotificationType type);
    // Task dates hold the chosen wall clock labelled UTC: the same figures as a local moment.
    static QDateTime convertFromUtcToLocal(const QDateTime& dateTime);
    // The moment the reminder of this type is due for an event at dateTime.
    static QDateTime getModifiedDateTimeByNotificationType(const QDateTime& dateTime,
                                                           NotificationManager::NotificationType type);
    static QString getTextByNotificationType(bool isStart, NotificationManager::NotificationType type);
    // The type whose lead is this many seconds; AtTimeOfEvent for any other figure.
    static NotificationManager::NotificationType convertToTypeFromSecs(int seconds);

    // The local moment of delivery that taskInfo and type describe; invalid when the date is.
    static QDateTime deliveryDateTime(const QVariantMap& taskInfo,
                                      NotificationManager::NotificationType type);
    static bool isStartReminder(const QVariantMap& taskInfo);
};

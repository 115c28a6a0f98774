#pragma once

#include "reminders/notificationmanager.h"

#include <QString>

// One kept reminder wish of a repeating task.
struct RepeatedReminder
{
    enum Kind { Start = 0, Due = 1 };

    QString taskId;
    int kind = Start;
    NotificationManager::NotificationType type = NotificationManager::AtTimeOfEvent;

    bool operator==(const RepeatedReminder& other) const
    {
        return taskId == other.taskId && kind == other.kind && type == other.type;
    }
};

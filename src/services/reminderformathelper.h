#pragma once

#include "reminders/notificationmanager.h"

#include <QObject>
#include <QString>

// Writes a task's reminder choice for the date section of the task preview.
class ReminderFormatHelper : public QObject
{
    Q_OBJECT

public:
    explicit ReminderFormatHelper(QObject* parent = nullptr);
    ~ReminderFormatHelper() override;

    // isStart tells a reminder of the start from one of the deadline.
    Q_INVOKABLE QString formatReminderForPreviewSection(NotificationManager::NotificationType type,
                                                        bool isStart) const;
};

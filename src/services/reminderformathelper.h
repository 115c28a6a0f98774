#pragma once

#include <QObject>
#include <QString>

// Writes a task's reminder choice for the date section of the task preview.
class ReminderFormatHelper : public QObject
{
    Q_OBJECT

public:
    explicit ReminderFormatHelper(QObject* parent = nullptr);
    ~ReminderFormatHelper() override;

    // type holds a reminder type: 0 at the time of the event, 1 to 8 from five minutes to two days
    // ahead. isStart tells a reminder of the start from one of the deadline.
    Q_INVOKABLE QString formatReminderForPreviewSection(int type, bool isStart) const;
};

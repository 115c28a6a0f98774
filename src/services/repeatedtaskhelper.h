#pragma once

#include "reminders/notificationmanager.h"
#include "services/repeatedreminder.h"
#include "store/dataobject.h"

#include <QDate>
#include <QList>
#include <QObject>
#include <QVariantList>

#include <memory>

class DatabaseHandler;

// Repeating tasks are one stored row each; this class tells on which dates a rule falls and makes
// the occurrence maps that stand for the row on those dates. A notification holds one date only, so
// it also keeps each repeating task's wish to be reminded, in "repeated_tasks_reminders.dat", for the
// reminders of the next occurrence. Lives on the database thread.
class RepeatedTaskHelper : public QObject
{
    Q_OBJECT

public:
    // The program's helper, working on DatabaseHandler::instance().
    static RepeatedTaskHelper* instance();
    explicit RepeatedTaskHelper(DatabaseHandler* database, QObject* parent = nullptr);
    ~RepeatedTaskHelper() override;

    QList<DOTask> getRepeatedDayTasks(const QDate& date);
    int getRepeatedDayTaskCount(const QDate& date);
    bool hasRepeatedTasks(const QDate& date);
    DOTask getRepetitionTaskFromOriginalTask(const DOTask& task, const QDate& date);

    static DOTask cloneRepetitionTask(const DOTask& task, const QDate& date);
    static DOTask repairTaskDates(const DOTask& task);

public slots:
    // Each type is kept once per task and kind, in the order first set.
    void setStartDateReminder(const QString& taskId, NotificationManager::NotificationType type);
    bool hasStartDateReminder(const QString& taskId, NotificationManager::NotificationType type);
    void removeStartDateReminder(const QString& taskId, NotificationManager::NotificationType type);
    // The types as ints.
    QVariantList getStartDateReminders(const QString& taskId);
    void setDueDateReminder(const QString& taskId, NotificationManager::NotificationType type);
    bool hasDueDateReminder(const QString& taskId, NotificationManager::NotificationType type);
    void removeDueDateReminder(const QString& taskId, NotificationManager::NotificationType type);
    QVariantList getDueDateReminders(const QString& taskId);
    // False for an empty id.
    bool removeAllReminders(const QString& taskId);
    QList<RepeatedReminder> getAllReminders();
    void clearReminders();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

#pragma once

#include "store/dataobject.h"

#include <QDate>
#include <QDateTime>
#include <QObject>
#include <QStringList>

#include <memory>

class DatabaseHandler;

// Tasks in the table `task`: their writes, the lists and counts the interface shows, and the day
// queries that decide what stands in the daily plan. Lives on the database thread.
class TaskStore : public QObject
{
    Q_OBJECT

public:
    explicit TaskStore(DatabaseHandler* database, QObject* parent = nullptr);
    ~TaskStore() override;

    bool createTaskLocally(const DOTask& task);
    bool updateTaskLocally(const DOTask& task, QVariantMap* updatedTask = nullptr);
    bool createTaskRemotely(const QVariantMap& task);
    bool updateTaskRemotely(const QVariantMap& task);
    bool restoreTask(const DOTask& task);
    bool updateTaskParents(const QString& oldId, const QString& newId);

    // Moves a repeating task's START and DUE one step along its rule.
    static void setupNewTaskDates(DOTask& task);

    QList<DOTask> getProjectTasks(const QString& projectId);
    QList<DOTask> getDeletedProjectTasks(const QString& projectId);
    QList<DOTask> getContextTasks(const QString& contextId);
    QList<DOTask> getNoContextTasks();
    QList<DOTask> getActiveRepeatedTasks();
    DOTask getTaskById(const QString& id);
    QList<DOTask> getTasksByIds(const QStringList& ids);
    QList<DOTask> getDeletedTasks();
    QList<DOTask> getTasksToUpdate();
    QList<DOTask> getTasksToDeleteOrComplete();

    bool hasDeletedTasks();
    int getContextTaskCount(const QString& contextId);
    int getTaskCount();
    int getActiveDayTaskCount(const QDateTime& dateTime);
    int getOverdueDayTaskCount(const QDateTime& dateTime);
    int getProjectOverdueTaskCount(const QString& projectId);
    bool hasActiveObjects(const QDateTime& dateTime);
    bool hasOverdueTasks(const QDateTime& dateTime);

    // Stored tasks of a day, followed by the day's projects when they are shown in the daily plan.
    // Occurrences of repeating tasks are not included.
    QList<DataObject> getDayTasks(const QDate& date);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

#include "taskstore.h"

#include "core/clock.h"
#include "core/logmanager.h"
#include "store/calendarinfostore.h"
#include "store/databasehandler.h"
#include "store/dataobjectconverter.h"
#include "store/dayquery.h"
#include "store/objectkeys.h"
#include "store/predefineddatahelper.h"
#include "store/projectstore.h"
#include "store/storesettings.h"

#include <functional>

namespace {
const QString taskTable = QStringLiteral("task");

// Keys that only live on maps in the interface and never reach the row.
const QStringList transientTaskKeys = {QStringLiteral("LOCAL"), QStringLiteral("REPEATED"),
                                       QStringLiteral("FAKESTART"), QStringLiteral("FAKEDUE")};

const QString taskColumns =
    QStringLiteral("id, name, parent, memo, start, due, context, timestamp, state, synced, local, period");

const QString todayCondition = QStringLiteral(
    "WHERE (state = 0 AND (((due < %1 AND period = \"\") OR (due >= %1 AND due < %2)) OR (due <> '' AND "
    "due >= %2 AND (start = '' OR start < %2)) OR (due = '' AND start < %2))) OR (state = 2 AND (due >= %1 "
    "AND due < %2))");
const QString pastDayCondition =
    QStringLiteral("WHERE (state <> 1 AND state <> 3 AND (due >= %1 AND due < %2))");
const QString futureDayCondition = QStringLiteral(
    "WHERE (state = 0 AND ((due >= %1 AND due < %2) OR (due <> '' AND due >= %2 AND (start = '' OR start < "
    "%2)) OR (due = '' AND start < %2))) OR (state = 2 AND (due >= %1 AND due < %2))");

bool isCompleted(const DOTask& task)
{
    return task.value(stateKey).toInt() == COMPLETED_OBJECT_STATE;
}

// Counts the dated tasks that are not completed and whose due date matches.
int countOpenDatedTasks(const QList<DOTask>& tasks, const std::function<bool(const QDateTime& due)>& matches)
{
    int count = 0;
    for (const DOTask& task : tasks) {
        const QDateTime due = task.value(dueKey).toDateTime();
        if (!due.isNull() && !isCompleted(task) && matches(due))
            ++count;
    }
    return count;
}

void shiftDates(QDateTime& start, QDateTime& due, const std::function<QDateTime(const QDateTime&)>& shift)
{
    if (!start.isNull())
        start = shift(start);
    if (!due.isNull())
        due = shift(due);
}

// Days from the due date's weekday to the next weekday of the rule; the list is read as a cycle that
// wraps into the week `weeks` later. Zero when the due date's weekday is not one of the rule's.
int daysToNextListedWeekday(const QStringList& weekdays, int weeks, const QDateTime& due)
{
    const int weekday = due.toUTC().date().dayOfWeek();
    const int position = weekdays.indexOf(QString::number(weekday));
    if (position < 0)
        return 0;
    if (position == weekdays.size() - 1)
        return weekdays.first().toInt() - weekday + weeks * 7;
    return weekdays.at(position + 1).toInt() - weekday;
}
} // namespace

struct TaskStore::Private
{
    DatabaseHandler* database = nullptr;

    bool createTask(const DOTask& task);
    QList<DOTask> selectTasks(const QString& condition, const QVariantList& values = {}) const;
    QList<DOTask> selectDayTasks(const QDate& date) const;
    int countForDay(const QString& statement, const QDate& date) const;
};

bool TaskStore::Private::createTask(const DOTask& task)
{
    if (!task.contains(nameKey) || !task.contains(parentKey)) {
        QLOG_WARN() << "Task does not contain NAME or PARENT!";
        return false;
    }
    DOTask row = task;
    DataObjectConverter::prepareDates(row);
    return database->insertObject(row, taskTable);
}

QList<DOTask> TaskStore::Private::selectTasks(const QString& condition, const QVariantList& values) const
{
    return database->selectTaskRows(taskColumns, condition, values);
}

QList<DOTask> TaskStore::Private::selectDayTasks(const QDate& date) const
{
    const DayQuery day(date);
    const DayQuery::Statement condition =
        day.bind(day.condition(todayCondition, pastDayCondition, futureDayCondition));
    return database->selectTaskRows(taskColumns, condition.text, condition.values);
}

int TaskStore::Private::countForDay(const QString& statement, const QDate& date) const
{
    const DayQuery::Statement bound = DayQuery(date).bind(statement);
    return database->executeCountQuery(bound.text, bound.values);
}

TaskStore::TaskStore(DatabaseHandler* database, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->database = database;
}

TaskStore::~TaskStore() = default;

bool TaskStore::createTaskLocally(const DOTask& task)
{
    QLOG_INFO() << "Creating a new task locally...\n" << task.value(idKey).toString();
    return d->createTask(task);
}

bool TaskStore::createTaskRemotely(const QVariantMap& task)
{
    QLOG_INFO() << "Creating a new task remotely...\n" << task.value(idKey).toString();
    return d->createTask(task);
}

bool TaskStore::updateTaskLocally(const DOTask& task, QVariantMap* updatedTask)
{
    QLOG_INFO() << "Updating the task locally...\n" << task.value(idKey).toString();
    if (!task.contains(idKey) || !task.contains(parentKey)) {
        QLOG_WARN() << "Task does not contain ID or PARENT!";
        return false;
    }
    DOTask finalTask = task;
    for (const QString& key : transientTaskKeys)
        finalTask.remove(key);
    // A repeating task never ends: completing it moves the row on to its next dates, and the
    // completion itself is recorded as a separate task by the caller.
    if (isCompleted(finalTask) && !finalTask.value(periodKey).toString().isEmpty()) {
        QLOG_INFO() << "Recurring task completed. Setting up new dates...";
        finalTask.insert(stateKey, DEFAULT_OBJECT_STATE);
        setupNewTaskDates(finalTask);
    }
    DOTask row = finalTask;
    DataObjectConverter::prepareDates(row);

    if (!updatedTask)
        d->database->beginTransaction();
    uint timestamp = 0;
    const bool updated = d->database->updateObject(row, taskTable, timestamp);
    if (!updated)
        return false;
    d->database->calendarInfo()->markCalendarTaskUpdated(finalTask.value(idKey).toString());
    if (updatedTask)
        *updatedTask = DataObjectConverter::asWritten(row, timestamp);
    return true;
}

bool TaskStore::updateTaskRemotely(const QVariantMap& task)
{
    QLOG_INFO() << "Updating the task remotely...\n" << task.value(idKey).toString();
    if (!task.contains(idKey) || !task.contains(parentKey)) {
        QLOG_WARN() << "Task does not contain ID or PARENT!";
        return false;
    }
    DOTask row = task;
    DataObjectConverter::prepareDates(row);
    uint timestamp = 0;
    if (!d->database->updateObject(row, taskTable, timestamp))
        return false;
    d->database->calendarInfo()->markCalendarTaskUpdated(task.value(idKey).toString());
    // A task that is active again on the server needs its deleted projects and folders back.
    return d->database->projects()->restoreParents(task);
}

bool TaskStore::restoreTask(const DOTask& task)
{
    DOTask restored = task;
    restored.insert(stateKey, restored.value(stateKey).toInt() & ~DELETED_OBJECT_STATE);
    const QString parentId = restored.value(parentKey).toString();
    // Only a project that is gone altogether is replaced; a deleted one stays the parent.
    const bool parentMissing = d->database->projects()->getProjectById(parentId).isEmpty();
    if (parentMissing && parentId != PredefinedDataHelper::instance()->norvelBoxId())
        restored.insert(parentKey, PredefinedDataHelper::instance()->oneStepActionsId());
    return updateTaskLocally(restored);
}

bool TaskStore::updateTaskParents(const QString& oldId, const QString& newId)
{
    QLOG_INFO() << "Updating task parents... Old ID: " << oldId << "   New ID: " << newId;
    return d->database->executeQuery(
        QStringLiteral("UPDATE task SET parent = ?, timestamp = ? WHERE parent = ?"),
        {newId, DataObjectConverter::currentTimestamp(), oldId});
}

void TaskStore::setupNewTaskDates(DOTask& task)
{
    const QStringList fields = task.value(periodKey).toString().split(QLatin1Char(';'));
    if (fields.size() < 2)
        return;
    const QString unit = fields.at(0);
    const int n = fields.at(1).toInt();
    QDateTime start = task.value(startKey).toDateTime();
    QDateTime due = task.value(dueKey).toDateTime();

    if (unit == QLatin1String("m")) {
        shiftDates(start, due, [n](const QDateTime& date) { return date.addMonths(n); });
    } else if (unit == QLatin1String("d")) {
        shiftDates(start, due, [n](const QDateTime& date) { return date.addDays(n); });
    } else if (unit == QLatin1String("w") && fields.size() < 3) {
        shiftDates(start, due, [n](const QDateTime& date) { return date.addDays(n * 7); });
    } else if (fields.size() == 3) {
        const int days = daysToNextListedWeekday(fields.at(2).split(QLatin1Char(',')), n, due);
        shiftDates(start, due, [days](const QDateTime& date) { return date.addDays(days); });
    }

    task.insert(startKey, start);
    task.insert(dueKey, due);
    QLOG_INFO() << QStringLiteral("Task dates updated. { id: %1, start: %2, due: %3} \n ")
                       .arg(task.value(idKey).toString(), start.toString(), due.toString());
}

QList<DOTask> TaskStore::getProjectTasks(const QString& projectId)
{
    return d->selectTasks(QStringLiteral("WHERE (state = 0 OR state = 2) AND parent = ?"), {projectId});
}

QList<DOTask> TaskStore::getDeletedProjectTasks(const QString& projectId)
{
    return d->selectTasks(QStringLiteral("WHERE (state = 1 OR state = 3) AND parent = ?"), {projectId});
}

QList<DOTask> TaskStore::getContextTasks(const QString& contextId)
{
    return d->selectTasks(QStringLiteral("WHERE (state = 0 OR state = 2) AND context = ?"), {contextId});
}

QList<DOTask> TaskStore::getNoContextTasks()
{
    return d->selectTasks(QStringLiteral("WHERE state = 0 AND context = ''"));
}

QList<DOTask> TaskStore::getActiveRepeatedTasks()
{
    return d->selectTasks(QStringLiteral("WHERE period <> \"\" AND STATE = 0 ORDER BY period"));
}

DOTask TaskStore::getTaskById(const QString& id)
{
    return d->database->selectObject(QStringLiteral("SELECT %1 FROM task WHERE id = ?").arg(taskColumns),
                                     {id});
}

QList<DOTask> TaskStore::getTasksByIds(const QStringList& ids)
{
    return d->selectTasks(QStringLiteral("WHERE id IN (%1)").arg(DatabaseHandler::placeholders(ids.size())),
                          QVariantList(ids.cbegin(), ids.cend()));
}

QList<DOTask> TaskStore::getDeletedTasks()
{
    return d->selectTasks(QStringLiteral("WHERE (state = 1 OR state = 3) AND timestamp >= ?"),
                          {StoreSettings::trashHorizon()});
}

QList<DOTask> TaskStore::getTasksToUpdate()
{
    return d->selectTasks(QStringLiteral("WHERE synced = 0 AND state = 0"));
}

QList<DOTask> TaskStore::getTasksToDeleteOrComplete()
{
    return d->selectTasks(
        QStringLiteral("WHERE synced = 0 AND ((local = 0 AND state <> 0) OR (local = 1 AND state = 2))"));
}

bool TaskStore::hasDeletedTasks()
{
    return d->database->executeCountQuery(
               QStringLiteral("SELECT COUNT(id) FROM task WHERE (state = 1 OR state = 3) AND timestamp >= ?"),
               {StoreSettings::trashHorizon()}) > 0;
}

int TaskStore::getContextTaskCount(const QString& contextId)
{
    return d->database->executeCountQuery(
        QStringLiteral("SELECT COUNT(id) FROM task WHERE state = 0 AND context = ?"), {contextId});
}

int TaskStore::getTaskCount()
{
    return d->database->executeListCountQuery(
        QStringLiteral("SELECT COUNT(task.id) FROM task WHERE task.id NOT IN (%1)"),
        StoreSettings::predefinedIds());
}

int TaskStore::getActiveDayTaskCount(const QDateTime& dateTime)
{
    const QDateTime moment = DayQuery::asWallClock(dateTime);
    return countOpenDatedTasks(d->selectDayTasks(moment.date()), [&moment](const QDateTime& due) {
        return due.date() == moment.date() && due >= moment;
    });
}

int TaskStore::getOverdueDayTaskCount(const QDateTime& dateTime)
{
    const QDateTime moment = DayQuery::asWallClock(dateTime);
    return countOpenDatedTasks(d->selectDayTasks(moment.date()),
                               [&moment](const QDateTime& due) { return due < moment; });
}

int TaskStore::getProjectOverdueTaskCount(const QString& projectId)
{
    const QDateTime now = DayQuery::asWallClock(Clock::currentDateTime());
    return countOpenDatedTasks(getProjectTasks(projectId),
                               [&now](const QDateTime& due) { return due < now; });
}

bool TaskStore::hasActiveObjects(const QDateTime& dateTime)
{
    const QDate day = DayQuery::asWallClock(dateTime).date();
    if (d->countForDay(
            QStringLiteral("SELECT COUNT(id) FROM task WHERE state = 0 AND (due >= %1 AND due < %2)"), day) >
        0)
        return true;
    if (!StoreSettings::showProjectsInDailyPlan())
        return false;
    return d->countForDay(
               QStringLiteral("SELECT COUNT(id) FROM project WHERE state = 0 AND (due >= %1 AND due < %2)"),
               day) > 0;
}

bool TaskStore::hasOverdueTasks(const QDateTime& dateTime)
{
    return d->countForDay(QStringLiteral("SELECT COUNT(id) FROM task WHERE state = 0 AND due < %1"),
                          DayQuery::asWallClock(dateTime).date()) > 0;
}

QList<DataObject> TaskStore::getDayTasks(const QDate& date)
{
    if (!date.isValid())
        return {};
    const bool withProjects = StoreSettings::showProjectsInDailyPlan();
    QList<DataObject> objects = d->selectDayTasks(date);
    if (withProjects)
        objects.append(d->database->projects()->getDayProjects(date));
    return objects;
}

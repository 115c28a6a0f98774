#include "calendarinfostore.h"

#include "store/databasehandler.h"

#include <QSqlRecord>

namespace {
const QString calendarTaskColumns = QStringLiteral(
    "SELECT task.id, task.name, task.parent, task.memo, task.start, task.due, task.context, task.timestamp, "
    "task.state, task.synced, task.local, task.period FROM task LEFT JOIN calendar_info ON task.id = "
    "calendar_info.task_id ");
} // namespace

struct CalendarInfoStore::Private
{
    DatabaseHandler* database = nullptr;
};

CalendarInfoStore::CalendarInfoStore(DatabaseHandler* database, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->database = database;
}

CalendarInfoStore::~CalendarInfoStore() = default;

QList<DOTask> CalendarInfoStore::getCalendarTasksToCreate()
{
    return d->database->selectObjects(
        calendarTaskColumns + QStringLiteral("WHERE task.state = 0 AND calendar_info.synced IS NULL"));
}

QList<DOTask> CalendarInfoStore::getCalendarTasksToUpdate()
{
    return d->database->selectObjects(
        calendarTaskColumns + QStringLiteral("WHERE calendar_info.synced = 1 AND calendar_info.updated = 1 "
                                             "AND (task.state <> 1 AND task.state <> 3)"));
}

QStringList CalendarInfoStore::getCalendarTasksToDelete()
{
    return d->database->selectFirstColumn(QStringLiteral(
        "SELECT task.id FROM task LEFT JOIN calendar_info ON task.id = calendar_info.task_id WHERE "
        "calendar_info.synced = 1 AND calendar_info.updated = 1 AND (task.state = 1 OR task.state = 3)"));
}

QStringList CalendarInfoStore::getCalendarTaskIds()
{
    return d->database->selectFirstColumn(QStringLiteral("SELECT task_id FROM calendar_info"));
}

bool CalendarInfoStore::handleCalendarTaskCreated(const QString& taskId)
{
    return d->database->executeQuery(
        QStringLiteral("INSERT INTO calendar_info(task_id, synced) VALUES(?, 1)"), {taskId});
}

bool CalendarInfoStore::handleCalendarTaskUpdated(const QString& taskId)
{
    return d->database->executeQuery(QStringLiteral("UPDATE calendar_info SET updated = 0 WHERE task_id = ?"),
                                     {taskId});
}

bool CalendarInfoStore::clearCalendarInfoTable()
{
    return d->database->executeQuery(QStringLiteral("DELETE FROM calendar_info"));
}

bool CalendarInfoStore::markCalendarTasksToUpdate()
{
    return d->database->executeQuery(QStringLiteral("UPDATE calendar_info SET updated = 1"));
}

bool CalendarInfoStore::markCalendarTaskUpdated(const QString& taskId)
{
    return d->database->executeQuery(QStringLiteral("UPDATE calendar_info SET updated = 1 WHERE task_id = ?"),
                                     {taskId});
}

#include "taskhandler.h"

#include "core/logmanager.h"
#include "core/settings.h"
#include "models/dailyplanlistmodel.h"
#include "models/dailyplansortmodel.h"
#include "models/listmodel.h"
#include "models/nocontexttaskslistmodel.h"
#include "models/nocontexttaskssortmodel.h"
#include "models/sortmodel.h"
#include "store/datamanager.h"
#include "store/objectkeys.h"
#include "store/predefineddatahelper.h"

#include <QJSValueList>
#include <QMultiHash>

namespace {
const QString repeatedKey = QStringLiteral("REPEATED");
const QString fakeStartKey = QStringLiteral("FAKESTART");
const QString fakeDueKey = QStringLiteral("FAKEDUE");

DataManager* data()
{
    return DataManager::instance();
}

QString idOf(const QVariantMap& task)
{
    return task.value(idKey).toString();
}

bool repeats(const QVariantMap& task)
{
    return !task.value(periodKey).toString().isEmpty();
}

// An occurrence carries its own dates beside the stored ones while it is dated today or earlier.
QVariant occurrenceDate(const QVariantMap& task, const QString& fakeKey, const QString& key)
{
    return task.contains(fakeKey) ? task.value(fakeKey) : task.value(key);
}

// Favorites are kept by the favorites manager, which is not part of the program yet: until it is,
// no task is a favorite and nothing can be added to them.
QStringList favoriteTaskIds()
{
    return {};
}

// The inbox and the one-step project keep one stored order whichever account gave them their ids.
QString projectListId(const QString& projectId)
{
    const PredefinedDataHelper* predefined = PredefinedDataHelper::instance();
    if (projectId == predefined->norvelBoxId())
        return QStringLiteral("norvelbox");
    if (projectId == predefined->oneStepActionsId())
        return QStringLiteral("1_step_actions");
    return projectId;
}
} // namespace

struct TaskHandler::Private
{
    // Several cells may wait for one moment; each reply serves the newest.
    QMultiHash<QDateTime, QJSValue> callbacks;
    QString lastCreatedTaskId;

    bool finishWrite(bool written, TaskHandler* handler, void (TaskHandler::*signal)(const QVariantMap&),
                     const QVariantMap& task);
};

// The write is committed whatever its result; only a write that is also stored is announced.
bool TaskHandler::Private::finishWrite(bool written, TaskHandler* handler,
                                       void (TaskHandler::*signal)(const QVariantMap&),
                                       const QVariantMap& task)
{
    const bool committed = data()->commitChanges();
    if (!written || !committed)
        return false;
    emit(handler->*signal)(task);
    data()->startSyncDelayed();
    return true;
}

TaskHandler::TaskHandler(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    connect(data(), &DataManager::indicatorStateForDateChanged, this, &TaskHandler::handleIndicatorState);
}

TaskHandler::~TaskHandler() = default;

// In every pair the filters and the list's name are set before the rows arrive, so that the first
// sort already follows them.
QVariant TaskHandler::getDayTasks(const QDate& date)
{
    auto* sortModel = new DailyPlanSortModel;
    sortModel->setExcludeCompletedObjectsType(SortModel::ExcludeCompletedTasks);
    sortModel->setExcludeFutureTasks(!Settings::instance()->isShowFutureTasks());
    sortModel->setModelType(SortingNamespace::ListTypeDailyPlan, date.toString(QStringLiteral("ddMMyyyy")));
    sortModel->setSourceModel(new DailyPlanListModel(date, [date] { return data()->getDayTasks(date); }));
    return QVariant::fromValue(sortModel);
}

QVariant TaskHandler::getContextTasks(const QString& contextId)
{
    auto* sortModel = new SortModel;
    sortModel->setExcludeCompletedObjectsType(SortModel::ExcludeCompletedTasks);
    sortModel->setSourceModel(new ListModel([contextId] { return data()->getContextTasks(contextId); }));
    return QVariant::fromValue(sortModel);
}

QVariant TaskHandler::getNoContextTasks()
{
    auto* sortModel = new NoContextTasksSortModel;
    sortModel->setExcludeCompletedObjectsType(SortModel::ExcludeCompletedTasks);
    sortModel->setSourceModel(new NoContextTasksListModel([] { return data()->getNoContextTasks(); }));
    return QVariant::fromValue(sortModel);
}

QVariant TaskHandler::getProjectTasks(const QString& projectId)
{
    auto* sortModel = new SortModel;
    sortModel->setExcludeCompletedObjectsType(SortModel::ExcludeCompletedTasks);
    sortModel->setModelType(SortingNamespace::ListTypeProject, projectListId(projectId));
    sortModel->setSourceModel(new ListModel([projectId] { return data()->getProjectTasks(projectId); }));
    return QVariant::fromValue(sortModel);
}

// A row in the trash is never in the completed state alone, so no completed filter is chosen.
QVariant TaskHandler::getDeletedTasks()
{
    auto* sortModel = new SortModel;
    sortModel->setSourceModel(new ListModel([] { return data()->getDeletedTasks(); }));
    return QVariant::fromValue(sortModel);
}

int TaskHandler::getActiveDayTaskCount(const QDateTime& dateTime)
{
    return data()->getActiveDayTaskCount(dateTime);
}

int TaskHandler::getOverdueDayTaskCount(const QDateTime& dateTime)
{
    return data()->getOverdueDayTaskCount(dateTime);
}

bool TaskHandler::hasDeletedTasks()
{
    return data()->hasDeletedTasks();
}

int TaskHandler::getProjectTaskCount(const QString& projectId)
{
    return data()->getProjectTaskCount(projectId);
}

int TaskHandler::getProjectOverdueTaskCount(const QString& projectId)
{
    return data()->getProjectOverdueTaskCount(projectId);
}

QVariant TaskHandler::getTaskById(const QString& id)
{
    return data()->getTaskById(id);
}

int TaskHandler::getTaskCount()
{
    return data()->getTaskCount();
}

bool TaskHandler::createTask(const QVariantMap& task)
{
    return d->finishWrite(data()->createTaskLocally(task), this, &TaskHandler::taskAdded, task);
}

bool TaskHandler::updateTask(const QVariantMap& task)
{
    return d->finishWrite(data()->updateTaskLocally(task), this, &TaskHandler::taskUpdated, task);
}

bool TaskHandler::restoreTask(const QVariantMap& task)
{
    return d->finishWrite(data()->restoreTask(task), this, &TaskHandler::taskUpdated, task);
}

bool TaskHandler::markTaskAsDeleted(const QVariantMap& task, bool emitUpdateSignal)
{
    QLOG_INFO() << "Marking the task " << idOf(task) << "with state " << task.value(stateKey).toInt()
                << "as deleted...\n";
    QVariantMap deleted = task;
    deleted.insert(stateKey, task.value(stateKey).toInt() | DELETED_OBJECT_STATE);
    const bool updated = data()->updateTaskLocally(deleted);
    if (updated && emitUpdateSignal) {
        emit taskUpdated(deleted);
        data()->startSyncDelayed();
    }
    return updated;
}

// The store moves a repeating task on when it arrives completed, counting from the dates it
// carries; those are the occurrence's, so an overdue task moves on from the day it was done.
bool TaskHandler::markTaskAsCompleted(const QVariantMap& task)
{
    QLOG_INFO() << "Marking the task " << idOf(task) << "with state " << task.value(stateKey).toInt()
                << "as completed...\n";
    QVariantMap completed = task;
    if (repeats(task)) {
        createCompletedCopy(task);
        completed.insert(startKey, occurrenceDate(task, fakeStartKey, startKey));
        completed.insert(dueKey, occurrenceDate(task, fakeDueKey, dueKey));
    }
    completed.insert(stateKey, COMPLETED_OBJECT_STATE);
    const bool updated = data()->updateTaskLocally(completed);
    if (updated) {
        emit taskUpdated(completed);
        data()->startSyncDelayed();
    }
    return updated;
}

// The copy is the history entry of one occurrence: a plain completed task on the occurrence's dates.
void TaskHandler::createCompletedCopy(const DOTask& occurrence)
{
    DOTask copy = occurrence;
    copy.insert(startKey, occurrenceDate(occurrence, fakeStartKey, startKey));
    copy.insert(dueKey, occurrenceDate(occurrence, fakeDueKey, dueKey));
    for (const QString& key : {fakeStartKey, fakeDueKey, idKey, repeatedKey})
        copy.remove(key);
    copy.insert(periodKey, QString());
    copy.insert(stateKey, COMPLETED_OBJECT_STATE);
    data()->createTaskLocally(copy);
    d->lastCreatedTaskId = data()->lastCreatedObjectId();
}

bool TaskHandler::confirmTaskUpdate(const QVariantMap& task)
{
    // Without pending changes an earlier confirmation has already committed this task's change.
    if (data()->hasPendingChanges() && !data()->commitChanges())
        return false;
    cleanUpAfterConfirmedTask(idOf(task));
    // Only a confirmation without a completed copy of its own announces itself, and with an empty
    // id, which listeners pass over.
    if (d->lastCreatedTaskId.isEmpty())
        emit repeatedTaskCompleted(d->lastCreatedTaskId);
    emit taskUpdated(task);
    return true;
}

// A task that left the active state takes its favorite and reminders with it. A repeating task that
// moved on keeps its reminders; both maps are the committed record, whose dates they now follow.
void TaskHandler::cleanUpAfterConfirmedTask(const QString& taskId)
{
    const DOTask stored = data()->getTaskById(taskId);
    const int state = stored.value(stateKey).toInt();
    if (state != DEFAULT_OBJECT_STATE) {
        if (inFavorites(stored))
            removeFromFavorites(stored);
        data()->removeAllRemindersById(taskId);
    }
    if (!repeats(stored))
        return;
    if (state != DEFAULT_OBJECT_STATE)
        data()->removeAllRepeatedReminders(taskId);
    else
        data()->rescheduleReminders(stored, stored);
}

void TaskHandler::revertTaskState(const QVariantMap& task, bool emitUpdateSignal)
{
    QLOG_INFO() << "Reverting task's state...\n" << idOf(task);
    data()->rollbackChanges();
    data()->cancelDelayedSync();
    d->lastCreatedTaskId.clear();
    if (emitUpdateSignal)
        emit taskUpdated(task);
}

QString TaskHandler::lastCreatedTaskId() const
{
    return d->lastCreatedTaskId;
}

void TaskHandler::requestIndicatorStateForDate(const QDateTime& dateTime, const QJSValue& jsCallback)
{
    d->callbacks.insert(dateTime, jsCallback);
    data()->requestIndicatorStateForDate(dateTime);
}

void TaskHandler::handleIndicatorState(const QDateTime& dateTime, const IndicatorState& state)
{
    // Of the callbacks under one key, find() gives the one inserted last.
    const auto callback = d->callbacks.find(dateTime);
    if (callback == d->callbacks.end())
        return;
    QJSValue function = callback.value();
    d->callbacks.erase(callback);
    function.call({state.hasActiveTasks, state.hasOverdueTasks, state.hasRepeatedTasks});
}

// Until the favorites manager exists there is nowhere to keep a favorite (see favoriteTaskIds).
void TaskHandler::addToFavorites(const QVariantMap&) {}

void TaskHandler::removeFromFavorites(const QVariantMap&) {}

bool TaskHandler::inFavorites(const QVariantMap& task)
{
    return favoriteTaskIds().contains(idOf(task));
}

int TaskHandler::taskCountInFavorites()
{
    int count = 0;
    for (const QString& id : favoriteTaskIds()) {
        const DOTask task = data()->getTaskById(id);
        if (!task.isEmpty() && task.value(stateKey).toInt() == DEFAULT_OBJECT_STATE)
            ++count;
    }
    return count;
}

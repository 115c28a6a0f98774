#pragma once

#include "store/dataobject.h"

#include <QDate>
#include <QDateTime>
#include <QJSValue>
#include <QObject>
#include <QVariant>
#include <QVariantMap>

#include <memory>

// The one service through which the interface reads and changes tasks. It owns no task data: each
// operation is a short run of DataManager calls, followed by the signals that refresh the pages and
// by the delayed sync. Models it hands out have no parent; the page that took them frees them with
// requestDeletion().
//
// Deleting and completing are undoable: they leave the database transaction open, and the change
// is kept by confirmTaskUpdate or dropped by revertTaskState.
class TaskHandler : public QObject
{
    Q_OBJECT

public:
    explicit TaskHandler(QObject* parent = nullptr);
    ~TaskHandler() override;

    // Each returns a sort model over a fresh list model that re-reads the store at every update().
    Q_INVOKABLE QVariant getDayTasks(const QDate& date);
    Q_INVOKABLE QVariant getContextTasks(const QString& contextId);
    Q_INVOKABLE QVariant getNoContextTasks();
    Q_INVOKABLE QVariant getProjectTasks(const QString& projectId);
    Q_INVOKABLE QVariant getDeletedTasks();

    Q_INVOKABLE int getActiveDayTaskCount(const QDateTime& dateTime);
    // Every occurrence of a repeating task on the day counts, whether or not its time has passed.
    Q_INVOKABLE int getOverdueDayTaskCount(const QDateTime& dateTime);
    Q_INVOKABLE bool hasDeletedTasks();
    Q_INVOKABLE int getProjectTaskCount(const QString& projectId);
    Q_INVOKABLE int getProjectOverdueTaskCount(const QString& projectId);
    // The stored record, or an empty map.
    Q_INVOKABLE QVariant getTaskById(const QString& id);
    Q_INVOKABLE int getTaskCount();

    // Written and committed at once; the signal carries the caller's map, so a created task's new
    // ID is only in DataManager::lastCreatedObjectId().
    Q_INVOKABLE bool createTask(const QVariantMap& task);
    Q_INVOKABLE bool updateTask(const QVariantMap& task);
    Q_INVOKABLE bool restoreTask(const QVariantMap& task);

    // First phase of an undoable change. A multi-selection emits only for its last object, so that
    // the pages refresh once.
    Q_INVOKABLE bool markTaskAsDeleted(const QVariantMap& task, bool emitUpdateSignal = true);
    // A repeating task, or one of its occurrences, gets a completed copy for the occurrence's date
    // and moves on to its next dates.
    Q_INVOKABLE bool markTaskAsCompleted(const QVariantMap& task);
    // Second phase. The transaction is shared by every pending change, so the first confirmation of
    // a multi-selection commits them all; each confirmation still cleans up after its own task.
    Q_INVOKABLE bool confirmTaskUpdate(const QVariantMap& task);
    Q_INVOKABLE void revertTaskState(const QVariantMap& task, bool emitUpdateSignal = true);
    // The completed copy made by the latest completion of a repeating task.
    Q_INVOKABLE QString lastCreatedTaskId() const;

    // Answers later, on this thread, by calling jsCallback(hasActiveTasks, hasOverdueTasks,
    // hasRepeatedTasks). Requests for one moment are answered newest first.
    Q_INVOKABLE void requestIndicatorStateForDate(const QDateTime& dateTime, const QJSValue& jsCallback);

    Q_INVOKABLE void addToFavorites(const QVariantMap& task);
    Q_INVOKABLE void removeFromFavorites(const QVariantMap& task);
    Q_INVOKABLE bool inFavorites(const QVariantMap& task);
    // Favorites that are still active tasks.
    Q_INVOKABLE int taskCountInFavorites();

signals:
    void taskAdded(const QVariantMap& task);
    void taskUpdated(const QVariantMap& task);
    void repeatedTaskCompleted(const QString& taskId);

private:
    void handleIndicatorState(const QDateTime& dateTime, const IndicatorState& state);
    void createCompletedCopy(const DOTask& occurrence);
    void cleanUpAfterConfirmedTask(const QString& taskId);

    struct Private;
    std::unique_ptr<Private> d;
};

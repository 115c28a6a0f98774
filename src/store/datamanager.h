#pragma once

#include "store/dataobject.h"
#include "sync/sortedlistinfo.h"
#include "sync/sortingnamespace.h"

#include <QDate>
#include <QDateTime>
#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <memory>

// The interface thread's door to the database thread. Every store and manager operation has a method
// of the same name here; a call crosses to the worker and, unless it says otherwise, waits for the
// answer there, so the worker's one event loop serves all calls one after another. Code that runs on
// the database thread must never call the waiting methods: it would wait for itself.
//
// Reminder types travel as the int value of NotificationManager::NotificationType.
class DataManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isUserLoggedIn READ isUserLoggedIn NOTIFY userLoggedInChanged)
    Q_PROPERTY(bool isSyncActive READ isSyncActive NOTIFY syncActiveChanged)
    Q_PROPERTY(
        bool isAccountOperationActive READ isAccountOperationActive NOTIFY accountOperationActiveChanged)
    Q_PROPERTY(QDateTime lastSyncDateTime READ lastSyncDateTime NOTIFY lastSyncDateTimeChanged)

public:
    // The first call starts the database thread and returns once the database is open.
    static DataManager* instance();
    ~DataManager() override;

    // Database handler.
    Q_INVOKABLE bool isDataPrepared();
    Q_INVOKABLE bool commitChanges();
    Q_INVOKABLE bool rollbackChanges();
    // A local change waits for commitChanges or rollbackChanges.
    Q_INVOKABLE bool hasPendingChanges();
    Q_INVOKABLE QString lastCreatedObjectId();

    // Tasks.
    Q_INVOKABLE bool createTaskLocally(const DOTask& task);
    Q_INVOKABLE bool updateTaskLocally(const DOTask& task, QVariantMap* updatedTask = nullptr);
    Q_INVOKABLE bool restoreTask(const DOTask& task);
    Q_INVOKABLE bool hasDeletedTasks();
    Q_INVOKABLE int getActiveDayTaskCount(const QDateTime& dateTime);
    // Stored and overdue tasks of the day plus the day's repeating occurrences.
    Q_INVOKABLE int getOverdueDayTaskCount(const QDateTime& dateTime);
    Q_INVOKABLE int getProjectOverdueTaskCount(const QString& projectId);
    Q_INVOKABLE int getContextTaskCount(const QString& contextId);
    Q_INVOKABLE int getTaskCount();
    // The stored tasks and projects of the day, followed by the occurrences of repeating tasks.
    Q_INVOKABLE QList<DataObject> getDayTasks(const QDate& date);
    Q_INVOKABLE QList<DOTask> getContextTasks(const QString& contextId);
    Q_INVOKABLE QList<DOTask> getNoContextTasks();
    Q_INVOKABLE QList<DOTask> getProjectTasks(const QString& projectId);
    Q_INVOKABLE QList<DOTask> getDeletedProjectTasks(const QString& projectId);
    Q_INVOKABLE QList<DOTask> getDeletedTasks();
    Q_INVOKABLE DOTask getTaskById(const QString& id);
    Q_INVOKABLE QList<DOTask> getTasksByIds(const QStringList& ids);

    // Calendar export bookkeeping.
    Q_INVOKABLE QStringList getCalendarTaskIds();
    Q_INVOKABLE QList<DOTask> getCalendarTasksToCreate();
    Q_INVOKABLE QList<DOTask> getCalendarTasksToUpdate();
    Q_INVOKABLE QStringList getCalendarTasksToDelete();
    Q_INVOKABLE bool handleCalendarTaskCreated(const QString& taskId);
    Q_INVOKABLE bool handleCalendarTaskUpdated(const QString& taskId);
    Q_INVOKABLE bool clearCalendarInfoTable();
    Q_INVOKABLE bool markCalendarTasksToUpdate();

    // Projects and folders.
    Q_INVOKABLE bool createProjectLocally(const DataObject& project);
    Q_INVOKABLE bool updateProjectLocally(const DataObject& project,
                                          QList<QVariantMap>* updatedObjects = nullptr,
                                          QVariantMap* updatedProject = nullptr);
    Q_INVOKABLE bool restoreProject(const DOProject& project);
    Q_INVOKABLE bool restoreFolder(const DOFolder& folder);
    Q_INVOKABLE bool hasDeletedProjects();
    Q_INVOKABLE bool hasDeletedFolders();
    Q_INVOKABLE int getProjectTaskCount(const QString& projectId);
    Q_INVOKABLE int getNestedFolderCount(const QString& folderId, bool includeDeleted);
    Q_INVOKABLE int getNestedProjectCount(const QString& folderId, bool includeDeleted);
    Q_INVOKABLE int getProjectCount();
    Q_INVOKABLE QList<DataObject> getRootProjects();
    Q_INVOKABLE QList<DataObject> getNestedObjects(const QString& folderId);
    Q_INVOKABLE QStringList getProjectNameChain(const QString& projectId);
    Q_INVOKABLE TreeHierarchy getProjectTree();
    Q_INVOKABLE QList<DOProject> getAllActiveProjects();
    Q_INVOKABLE QList<DOFolder> getAllFolders();
    Q_INVOKABLE QList<DataObject> getSubprojectsRecursive(const QString& folderId);
    Q_INVOKABLE QList<DOProject> getDeletedProjects();
    Q_INVOKABLE QList<DOFolder> getDeletedFolders();
    Q_INVOKABLE DOProject getProjectById(const QString& id);

    // Contexts.
    Q_INVOKABLE bool createContextLocally(const DOContext& context);
    Q_INVOKABLE bool updateContextLocally(const DOContext& context,
                                          QList<DataObject>* updatedObjects = nullptr);
    Q_INVOKABLE bool restoreContext(const DOContext& context);
    Q_INVOKABLE bool hasDeletedContexts();
    Q_INVOKABLE int getNestedContextCount(const QString& contextId, bool includeAllStates);
    Q_INVOKABLE int getContextProjectCount(const QString& contextId);
    Q_INVOKABLE int getContextProjectCountRecursive(const QString& contextId);
    Q_INVOKABLE int getContextTaskCountRecursive(const QString& contextId);
    Q_INVOKABLE int getContextCount();
    Q_INVOKABLE QStringList getContextNameChain(const QString& contextId);
    Q_INVOKABLE TreeHierarchy getContextTree();
    Q_INVOKABLE QList<DOContext> getRootContexts();
    Q_INVOKABLE QList<DOContext> getAllContexts();
    Q_INVOKABLE QList<DataObject> getContextChildren(const QString& contextId);
    Q_INVOKABLE DOContext getContextById(const QString& id);
    Q_INVOKABLE QList<DOContext> getSubcontextsRecursive(const QString& contextId);
    Q_INVOKABLE QList<DOContext> getDeletedContexts();
    Q_INVOKABLE QList<DataObject> getAllObjects();

    // Reminder wishes of repeating tasks.
    Q_INVOKABLE bool removeAllRepeatedReminders(const QString& taskId);
    Q_INVOKABLE void setStartRepeatedReminder(const QString& taskId, int type);
    Q_INVOKABLE bool hasStartRepeatedReminder(const QString& taskId, int type);
    Q_INVOKABLE QVariantList getStartRepeatedReminders(const QString& taskId);
    Q_INVOKABLE void setDueRepeatedReminder(const QString& taskId, int type);
    Q_INVOKABLE bool hasDueRepeatedReminder(const QString& taskId, int type);
    Q_INVOKABLE QVariantList getDueRepeatedReminders(const QString& taskId);

    // Scheduled reminders.
    Q_INVOKABLE int getReminderCount();
    Q_INVOKABLE void scheduleReminder(const QVariantMap& taskInfo, int type);
    Q_INVOKABLE void rescheduleReminders(const DOTask& oldTask, const DOTask& newTask);
    Q_INVOKABLE void removeScheduledReminder(const QVariantMap& taskInfo, int type);
    Q_INVOKABLE void removeAllRemindersById(const QString& taskId);
    Q_INVOKABLE bool hasScheduledReminder(const QVariantMap& taskInfo, int type);
    Q_INVOKABLE bool hasScheduledReminders(const QString& taskId);

    // Sorted lists.
    Q_INVOKABLE SortedListInfo getSortedListInfo(const QString& listId, SortingNamespace::ListType listType);
    Q_INVOKABLE void setSortedList(const QString& listId, SortingNamespace::ListType listType,
                                   SortingNamespace::SortingType sortingType, bool groupByDate);
    Q_INVOKABLE void setManualSortedList(const QString& listId, SortingNamespace::ListType listType,
                                         const SortingNamespace::OrderHash& orderHash);
    Q_INVOKABLE void deleteSortedList(const QString& listId, SortingNamespace::ListType listType);
    Q_INVOKABLE bool hasSortedListInfo(const QString& listId, SortingNamespace::ListType listType);
    Q_INVOKABLE SortingNamespace::SortingType getSortingType(const QString& listId,
                                                             SortingNamespace::ListType listType);
    Q_INVOKABLE bool getGroupByDateParam(const QString& listId, SortingNamespace::ListType listType);

    // Account and sync state.
    bool isUserLoggedIn();
    bool isSyncActive();
    bool isAccountOperationActive();
    QDateTime lastSyncDateTime();
    // Ends the session and clears what belongs to the account: sync state, reminders, sorted lists.
    Q_INVOKABLE void logout();

public slots:
    // Queued: these return at once and answer by signal.
    void startSync();
    void startSyncSilent();
    void abortSync();
    void registerUser(const QString& login, const QString& password);
    void checkLogin(const QString& login, const QString& password);
    void resetPassword(const QString& login);
    void changePassword(const QString& oldPassword, const QString& newPassword);
    void requestIndicatorStateForDate(const QDateTime& dateTime);

    // On the interface thread. A run of changes keeps pushing the delayed sync back.
    void startSyncDelayed();
    void cancelDelayedSync();
    // Merges a burst of requests into one cleaning of sorted lists on the database thread.
    void cleanSortedLists();

signals:
    void indicatorStateForDateChanged(const QDateTime& dateTime, const IndicatorState& state);
    void syncActiveChanged(bool active);
    void accountOperationActiveChanged(bool isAccountOperationActive);
    void userLoggedInChanged(bool loggedIn);
    void syncNetworkError(int code);
    void syncServerError(const QString& title, const QString& displayMessage, int code);
    void userIsAboutToLogout();
    void checkLoginSuccessful();
    void resetPasswordSuccessful();
    void changePasswordSuccessful();
    void userPasswordChangedOutside();
    void passwordChangedOutside();
    void userRegistrationSuccessful();
    void lastSyncDateTimeChanged(const QDateTime& lastSyncDateTime);
    void remindersSyncComplete();
    void sortingSyncComplete();

private:
    DataManager();
    void startWorker();
    void connectWorker();
    void connectSyncManager();
    void connectHardware();
    void setUpTimers();
    void restartMidnightTimer();
    void handleInternetConnectionOnline();
    // Turns the manual orders that older versions kept in settings.dat into sorted lists, once, from
    // the event loop at start-up.
    void moveOldSortHashes();

    struct Private;
    std::unique_ptr<Private> d;
};

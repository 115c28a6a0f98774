#include "datamanager.h"

#include "core/clock.h"
#include "core/logmanager.h"
#include "platform/hardwaremanager.h"
#include "reminders/notificationmanager.h"
#include "services/repeatedtaskhelper.h"
#include "store/calendarinfostore.h"
#include "store/contextstore.h"
#include "store/databasehandler.h"
#include "store/datahandler.h"
#include "store/predefineddatahelper.h"
#include "store/projectstore.h"
#include "store/taskstore.h"
#include "sync/authmanager.h"
#include "sync/sortingmanager.h"
#include "sync/syncmanager.h"

#include <QDataStream>
#include <QSettings>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>

using namespace SortingNamespace;

namespace {
constexpr int delayedSyncInterval = 10000;
constexpr int sortedListsCleanupInterval = 3000;

// The worker object, reached by every method without going through the instance.
DataHandler* dataHandler = nullptr;

// Runs the function on the database thread and waits for its result. The worker's one event loop
// serves these calls one after another, so each is atomic against every other call.
template <typename Function> auto onWorker(Function function) -> decltype(function())
{
    decltype(function()) result{};
    QMetaObject::invokeMethod(dataHandler, function, Qt::BlockingQueuedConnection, &result);
    return result;
}

template <typename Function> void onWorkerQueued(Function function)
{
    QMetaObject::invokeMethod(dataHandler, function, Qt::QueuedConnection);
}

// Valid on the database thread only.
DatabaseHandler* database()
{
    return DatabaseHandler::instance();
}

TaskStore* tasks()
{
    return database()->tasks();
}

ProjectStore* projects()
{
    return database()->projects();
}

ContextStore* contexts()
{
    return database()->contexts();
}

CalendarInfoStore* calendarInfo()
{
    return database()->calendarInfo();
}

// Older versions kept manual orders in settings.dat, one key per kind of list, each a QDataStream of
// list id to order hash.
const QString projectsSortHashKey = QStringLiteral("projects_sort_hash");
const QString contextsSortHashKey = QStringLiteral("contexts_sort_hash");
const QString dailyPlanSortHashKey = QStringLiteral("daily_plan_sort_hash");
const QString favoritesSortHashKey = QStringLiteral("favorites_sort_hash");

using OrderHashes = QHash<QString, OrderHash>;

struct ManualSortedList
{
    QString listId;
    ListType listType;
    OrderHash orderHash;
};

OrderHashes readOrderHashes(const QSettings& settings, const QString& key)
{
    OrderHashes hashes;
    QDataStream stream(settings.value(key).toByteArray());
    stream >> hashes;
    return hashes;
}

QList<ManualSortedList> oldProjectLists(const QSettings& settings, DataManager* dataManager)
{
    const QString rootProjects = QStringLiteral("root_projects");
    const PredefinedDataHelper* predefined = PredefinedDataHelper::instance();
    QList<ManualSortedList> lists;
    const OrderHashes hashes = readOrderHashes(settings, projectsSortHashKey);
    for (auto it = hashes.cbegin(); it != hashes.cend(); ++it) {
        QString listId = it.key();
        if (listId == predefined->oneStepActionsId())
            listId = QStringLiteral("1_step_actions");
        else if (listId == predefined->norvelBoxId())
            listId = QStringLiteral("norvelbox");
        const bool isFolder = it.key() == rootProjects ||
                              dataManager->getProjectById(it.key()).value(QStringLiteral("FOLDER")).toBool();
        lists.append({listId, isFolder ? ListTypeFolder : ListTypeProject, it.value()});
    }
    return lists;
}

QList<ManualSortedList> oldContextLists(const QSettings& settings)
{
    QList<ManualSortedList> lists;
    const OrderHashes hashes = readOrderHashes(settings, contextsSortHashKey);
    for (auto it = hashes.cbegin(); it != hashes.cend(); ++it)
        lists.append({it.key(), ListTypeContext, it.value()});
    return lists;
}

QList<ManualSortedList> oldDailyPlanLists(const QSettings& settings)
{
    QList<ManualSortedList> lists;
    const OrderHashes hashes = readOrderHashes(settings, dailyPlanSortHashKey);
    for (auto it = hashes.cbegin(); it != hashes.cend(); ++it)
        lists.append({QString(it.key()).remove(QLatin1Char('.')), ListTypeDailyPlan, it.value()});
    return lists;
}

QList<ManualSortedList> oldFavoritesLists(const QSettings& settings)
{
    const OrderHash favorites =
        readOrderHashes(settings, favoritesSortHashKey).value(QStringLiteral("favorites"));
    if (favorites.isEmpty())
        return {};
    return {{QStringLiteral("root_favorites"), ListTypeFavorites, favorites}};
}
} // namespace

struct DataManager::Private
{
    explicit Private(DataManager* q);

    QTimer* delayedSyncTimer;
    QTimer* midnightTimer;
    QTimer* sortedListsCleanupTimer;
};

DataManager::Private::Private(DataManager* q)
    : delayedSyncTimer(new QTimer(q))
    , midnightTimer(new QTimer(q))
    , sortedListsCleanupTimer(new QTimer(q))
{
    delayedSyncTimer->setObjectName(QStringLiteral("delayedSyncTimer"));
    midnightTimer->setObjectName(QStringLiteral("midnightTimer"));
    sortedListsCleanupTimer->setObjectName(QStringLiteral("sortedListsCleanupTimer"));
}

DataManager* DataManager::instance()
{
    static DataManager* const dataManager = [] {
        QLOG_INFO() << "Initialization of data manager...";
        return new DataManager;
    }();
    return dataManager;
}

DataManager::DataManager()
    : d(std::make_unique<Private>(this))
{
    restartMidnightTimer();
    // The REST syncs on the database thread ask this thread's account manager for their token, so it
    // must belong here before the worker can make it.
    AuthManager::instance();
    startWorker();
    connectWorker();
    connectHardware();
    setUpTimers();
    QTimer::singleShot(0, this, &DataManager::moveOldSortHashes);
}

DataManager::~DataManager() = default;

void DataManager::startWorker()
{
    dataHandler = new DataHandler;
    qRegisterMetaType<IndicatorState>("IndicatorState");
    auto* thread = new QThread(this);
    dataHandler->moveToThread(thread);
    thread->start(QThread::InheritPriority);
    QMetaObject::invokeMethod(dataHandler, &DataHandler::initialize, Qt::BlockingQueuedConnection);
}

void DataManager::connectWorker()
{
    connectSyncManager();
    connect(dataHandler, &DataHandler::indicatorStateForDateChanged, this,
            &DataManager::indicatorStateForDateChanged, Qt::QueuedConnection);
    connect(dataHandler->sortingManager(), &SortingManager::completed, this,
            &DataManager::sortingSyncComplete, Qt::QueuedConnection);
    // The worker may not start a timer of this thread; the midnight sync is re-armed here instead.
    connect(
        dataHandler, &DataHandler::mainSyncFinished, this,
        [this] {
            if (!d->midnightTimer->isActive())
                restartMidnightTimer();
        },
        Qt::QueuedConnection);
}

void DataManager::connectSyncManager()
{
    SyncManager* sync = onWorker([] { return SyncManager::instance(); });
    const auto queued = Qt::QueuedConnection;
    connect(sync, &SyncManager::activeChanged, this, &DataManager::syncActiveChanged, queued);
    connect(sync, &SyncManager::loggedInChanged, this, &DataManager::userLoggedInChanged, queued);
    connect(sync, &SyncManager::networkError, this, &DataManager::syncNetworkError, queued);
    connect(sync, &SyncManager::serverError, this, &DataManager::syncServerError, queued);
    connect(sync, &SyncManager::userIsAboutToLogout, this, &DataManager::userIsAboutToLogout, queued);
    connect(sync, &SyncManager::checkLoginSuccessful, this, &DataManager::checkLoginSuccessful, queued);
    connect(sync, &SyncManager::resetPasswordSuccessful, this, &DataManager::resetPasswordSuccessful, queued);
    connect(sync, &SyncManager::changePasswordSuccessful, this, &DataManager::changePasswordSuccessful,
            queued);
    connect(sync, &SyncManager::userRegistered, this, &DataManager::userRegistrationSuccessful, queued);
    connect(sync, &SyncManager::passwordChangedOutside, this, &DataManager::userPasswordChangedOutside,
            queued);
    connect(sync, &SyncManager::lastSyncDateTimeChanged, this, &DataManager::lastSyncDateTimeChanged, queued);
    for (auto changed : {&SyncManager::registrationActiveChanged, &SyncManager::checkLoginActiveChanged,
                         &SyncManager::resetPasswordActiveChanged, &SyncManager::changePasswordActiveChanged})
        connect(sync, changed, this, &DataManager::accountOperationActiveChanged, queued);
}

void DataManager::connectHardware()
{
    HardwareManager* hardware = HardwareManager::instance();
    connect(hardware, &HardwareManager::computerWokeUp, this, &DataManager::startSyncDelayed);
    // Timers stand still while the machine sleeps, so the midnight sync is measured anew on waking.
    connect(hardware, &HardwareManager::computerWokeUp, this, &DataManager::restartMidnightTimer);
    connect(hardware, &HardwareManager::computerWokeUp, NotificationManager::instance(),
            &NotificationManager::handleComputerWokeUp);
    connect(hardware, &HardwareManager::internetConnectionOnline, this,
            &DataManager::handleInternetConnectionOnline, Qt::DirectConnection);
}

void DataManager::setUpTimers()
{
    d->delayedSyncTimer->setInterval(delayedSyncInterval);
    d->sortedListsCleanupTimer->setInterval(sortedListsCleanupInterval);
    for (QTimer* timer : {d->delayedSyncTimer, d->midnightTimer, d->sortedListsCleanupTimer})
        timer->setSingleShot(true);
    connect(d->delayedSyncTimer, &QTimer::timeout, this, &DataManager::startSyncSilent);
    connect(d->midnightTimer, &QTimer::timeout, this, &DataManager::startSyncSilent);
    connect(d->sortedListsCleanupTimer, &QTimer::timeout, this,
            [] { onWorkerQueued([] { dataHandler->cleanSortedLists(); }); });
}

void DataManager::restartMidnightTimer()
{
    const QDateTime now = Clock::currentDateTime();
    // Where the clocks go forward at midnight the day starts later than 00:00; startOfDay knows.
    const QDateTime nextMidnight = now.date().addDays(1).startOfDay();
    d->midnightTimer->start(static_cast<int>(now.msecsTo(nextMidnight)));
}

void DataManager::handleInternetConnectionOnline()
{
    d->delayedSyncTimer->start();
    restartMidnightTimer();
}

void DataManager::moveOldSortHashes()
{
    const QString dataDirectory = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QSettings settings(dataDirectory + QStringLiteral("/settings.dat"), QSettings::IniFormat);
    const QList<ManualSortedList> lists = oldProjectLists(settings, this) + oldContextLists(settings) +
                                          oldDailyPlanLists(settings) + oldFavoritesLists(settings);
    for (const ManualSortedList& list : lists)
        setManualSortedList(list.listId, list.listType, list.orderHash);
    for (const QString& key :
         {projectsSortHashKey, contextsSortHashKey, dailyPlanSortHashKey, favoritesSortHashKey})
        settings.remove(key);
    settings.sync();
}

// Database handler.

bool DataManager::isDataPrepared()
{
    return onWorker([] { return database()->isConnected(); });
}

bool DataManager::commitChanges()
{
    return onWorker([] { return database()->commitChanges(); });
}

bool DataManager::rollbackChanges()
{
    return onWorker([] { return database()->rollbackChanges(); });
}

bool DataManager::hasPendingChanges()
{
    return onWorker([] { return database()->isTransactionOpen(); });
}

QString DataManager::lastCreatedObjectId()
{
    return onWorker([] { return database()->lastCreatedObjectId(); });
}

// Tasks.

bool DataManager::createTaskLocally(const DOTask& task)
{
    return onWorker([&] { return tasks()->createTaskLocally(task); });
}

bool DataManager::updateTaskLocally(const DOTask& task, QVariantMap* updatedTask)
{
    return onWorker([&] { return tasks()->updateTaskLocally(task, updatedTask); });
}

bool DataManager::restoreTask(const DOTask& task)
{
    return onWorker([&] { return tasks()->restoreTask(task); });
}

bool DataManager::hasDeletedTasks()
{
    return onWorker([] { return tasks()->hasDeletedTasks(); });
}

int DataManager::getActiveDayTaskCount(const QDateTime& dateTime)
{
    return onWorker([&] { return tasks()->getActiveDayTaskCount(dateTime); });
}

int DataManager::getOverdueDayTaskCount(const QDateTime& dateTime)
{
    return onWorker([&] { return tasks()->getOverdueDayTaskCount(dateTime); }) +
           onWorker([&] { return RepeatedTaskHelper::instance()->getRepeatedDayTaskCount(dateTime.date()); });
}

int DataManager::getProjectOverdueTaskCount(const QString& projectId)
{
    return onWorker([&] { return tasks()->getProjectOverdueTaskCount(projectId); });
}

int DataManager::getContextTaskCount(const QString& contextId)
{
    return onWorker([&] { return tasks()->getContextTaskCount(contextId); });
}

int DataManager::getTaskCount()
{
    return onWorker([] { return tasks()->getTaskCount(); });
}

QList<DataObject> DataManager::getDayTasks(const QDate& date)
{
    // Appended to the list the first call made, which nothing else holds: a concatenation would copy
    // the day's tens of thousands of maps once more.
    QList<DataObject> objects = onWorker([&] { return tasks()->getDayTasks(date); });
    objects.append(onWorker([&] { return RepeatedTaskHelper::instance()->getRepeatedDayTasks(date); }));
    return objects;
}

QList<DOTask> DataManager::getContextTasks(const QString& contextId)
{
    return onWorker([&] { return tasks()->getContextTasks(contextId); });
}

QList<DOTask> DataManager::getNoContextTasks()
{
    return onWorker([] { return tasks()->getNoContextTasks(); });
}

QList<DOTask> DataManager::getProjectTasks(const QString& projectId)
{
    return onWorker([&] { return tasks()->getProjectTasks(projectId); });
}

QList<DOTask> DataManager::getDeletedProjectTasks(const QString& projectId)
{
    return onWorker([&] { return tasks()->getDeletedProjectTasks(projectId); });
}

QList<DOTask> DataManager::getDeletedTasks()
{
    return onWorker([] { return tasks()->getDeletedTasks(); });
}

DOTask DataManager::getTaskById(const QString& id)
{
    return onWorker([&] { return tasks()->getTaskById(id); });
}

QList<DOTask> DataManager::getTasksByIds(const QStringList& ids)
{
    return onWorker([&] { return tasks()->getTasksByIds(ids); });
}

// Calendar export bookkeeping.

QStringList DataManager::getCalendarTaskIds()
{
    return onWorker([] { return calendarInfo()->getCalendarTaskIds(); });
}

QList<DOTask> DataManager::getCalendarTasksToCreate()
{
    return onWorker([] { return calendarInfo()->getCalendarTasksToCreate(); });
}

QList<DOTask> DataManager::getCalendarTasksToUpdate()
{
    return onWorker([] { return calendarInfo()->getCalendarTasksToUpdate(); });
}

QStringList DataManager::getCalendarTasksToDelete()
{
    return onWorker([] { return calendarInfo()->getCalendarTasksToDelete(); });
}

bool DataManager::handleCalendarTaskCreated(const QString& taskId)
{
    return onWorker([&] { return calendarInfo()->handleCalendarTaskCreated(taskId); });
}

bool DataManager::handleCalendarTaskUpdated(const QString& taskId)
{
    return onWorker([&] { return calendarInfo()->handleCalendarTaskUpdated(taskId); });
}

bool DataManager::clearCalendarInfoTable()
{
    return onWorker([] { return calendarInfo()->clearCalendarInfoTable(); });
}

bool DataManager::markCalendarTasksToUpdate()
{
    return onWorker([] { return calendarInfo()->markCalendarTasksToUpdate(); });
}

// Projects and folders.

bool DataManager::createProjectLocally(const DataObject& project)
{
    return onWorker([&] { return projects()->createProjectLocally(project); });
}

bool DataManager::updateProjectLocally(const DataObject& project, QList<QVariantMap>* updatedObjects,
                                       QVariantMap* updatedProject)
{
    return onWorker(
        [&] { return projects()->updateProjectLocally(project, updatedObjects, updatedProject); });
}

bool DataManager::restoreProject(const DOProject& project)
{
    return onWorker([&] { return projects()->restoreProject(project); });
}

bool DataManager::restoreFolder(const DOFolder& folder)
{
    return onWorker([&] { return projects()->restoreFolder(folder); });
}

bool DataManager::hasDeletedProjects()
{
    return onWorker([] { return projects()->hasDeletedProjects(); });
}

bool DataManager::hasDeletedFolders()
{
    return onWorker([] { return projects()->hasDeletedFolders(); });
}

int DataManager::getProjectTaskCount(const QString& projectId)
{
    return onWorker([&] { return projects()->getProjectTaskCount(projectId); });
}

int DataManager::getNestedFolderCount(const QString& folderId, bool includeDeleted)
{
    return onWorker([&] { return projects()->getNestedFolderCount(folderId, includeDeleted); });
}

int DataManager::getNestedProjectCount(const QString& folderId, bool includeDeleted)
{
    return onWorker([&] { return projects()->getNestedProjectCount(folderId, includeDeleted); });
}

int DataManager::getProjectCount()
{
    return onWorker([] { return projects()->getProjectCount(); });
}

QList<DataObject> DataManager::getRootProjects()
{
    return onWorker([] { return projects()->getRootProjects(); });
}

QList<DataObject> DataManager::getNestedObjects(const QString& folderId)
{
    return onWorker([&] { return projects()->getNestedObjects(folderId); });
}

QStringList DataManager::getProjectNameChain(const QString& projectId)
{
    return onWorker([&] { return projects()->getProjectNameChain(projectId); });
}

TreeHierarchy DataManager::getProjectTree()
{
    return onWorker([] { return projects()->getProjectTree(); });
}

QList<DOProject> DataManager::getAllActiveProjects()
{
    return onWorker([] { return projects()->getAllActiveProjects(); });
}

QList<DOFolder> DataManager::getAllFolders()
{
    return onWorker([] { return projects()->getAllFolders(); });
}

QList<DataObject> DataManager::getSubprojectsRecursive(const QString& folderId)
{
    return onWorker([&] { return projects()->getSubprojectsRecursive(folderId); });
}

QList<DOProject> DataManager::getDeletedProjects()
{
    return onWorker([] { return projects()->getDeletedProjects(); });
}

QList<DOFolder> DataManager::getDeletedFolders()
{
    return onWorker([] { return projects()->getDeletedFolders(); });
}

DOProject DataManager::getProjectById(const QString& id)
{
    return onWorker([&] { return projects()->getProjectById(id); });
}

// Contexts.

bool DataManager::createContextLocally(const DOContext& context)
{
    return onWorker([&] { return contexts()->createContextLocally(context); });
}

bool DataManager::updateContextLocally(const DOContext& context, QList<DataObject>* updatedObjects)
{
    return onWorker([&] { return contexts()->updateContextLocally(context, updatedObjects); });
}

bool DataManager::restoreContext(const DOContext& context)
{
    return onWorker([&] { return contexts()->restoreContext(context); });
}

bool DataManager::hasDeletedContexts()
{
    return onWorker([] { return contexts()->hasDeletedContexts(); });
}

int DataManager::getNestedContextCount(const QString& contextId, bool includeAllStates)
{
    return onWorker([&] { return contexts()->getNestedContextCount(contextId, includeAllStates); });
}

int DataManager::getContextProjectCount(const QString& contextId)
{
    return onWorker([&] { return contexts()->getContextProjectCount(contextId); });
}

int DataManager::getContextProjectCountRecursive(const QString& contextId)
{
    return onWorker([&] { return contexts()->getContextProjectCountRecursive(contextId); });
}

int DataManager::getContextTaskCountRecursive(const QString& contextId)
{
    return onWorker([&] { return contexts()->getContextTaskCountRecursive(contextId); });
}

int DataManager::getContextCount()
{
    return onWorker([] { return contexts()->getContextCount(); });
}

QStringList DataManager::getContextNameChain(const QString& contextId)
{
    return onWorker([&] { return contexts()->getContextNameChain(contextId); });
}

TreeHierarchy DataManager::getContextTree()
{
    return onWorker([] { return contexts()->getContextTree(); });
}

QList<DOContext> DataManager::getRootContexts()
{
    return onWorker([] { return contexts()->getRootContexts(); });
}

QList<DOContext> DataManager::getAllContexts()
{
    return onWorker([] { return contexts()->getAllContexts(); });
}

QList<DataObject> DataManager::getContextChildren(const QString& contextId)
{
    return onWorker([&] { return contexts()->getContextChildren(contextId); });
}

DOContext DataManager::getContextById(const QString& id)
{
    return onWorker([&] { return contexts()->getContextById(id); });
}

QList<DOContext> DataManager::getSubcontextsRecursive(const QString& contextId)
{
    return onWorker([&] { return contexts()->getSubcontextsRecursive(contextId); });
}

QList<DOContext> DataManager::getDeletedContexts()
{
    return onWorker([] { return contexts()->getDeletedContexts(); });
}

QList<DataObject> DataManager::getAllObjects()
{
    return onWorker([] { return contexts()->getAllObjects(); });
}

// Reminders: the wishes of repeating tasks and the scheduled notifications, both on the database thread.

namespace {
template <typename Function> void onWorkerWithoutResult(Function function)
{
    QMetaObject::invokeMethod(dataHandler, function, Qt::BlockingQueuedConnection);
}

NotificationManager* notifications()
{
    return NotificationManager::instance();
}

NotificationManager::NotificationType notificationType(int type)
{
    return static_cast<NotificationManager::NotificationType>(type);
}
} // namespace

bool DataManager::removeAllRepeatedReminders(const QString& taskId)
{
    return onWorker([&] { return RepeatedTaskHelper::instance()->removeAllReminders(taskId); });
}

void DataManager::setStartRepeatedReminder(const QString& taskId, int type)
{
    onWorkerWithoutResult(
        [&] { RepeatedTaskHelper::instance()->setStartDateReminder(taskId, notificationType(type)); });
}

bool DataManager::hasStartRepeatedReminder(const QString& taskId, int type)
{
    return onWorker(
        [&] { return RepeatedTaskHelper::instance()->hasStartDateReminder(taskId, notificationType(type)); });
}

QVariantList DataManager::getStartRepeatedReminders(const QString& taskId)
{
    return onWorker([&] { return RepeatedTaskHelper::instance()->getStartDateReminders(taskId); });
}

void DataManager::setDueRepeatedReminder(const QString& taskId, int type)
{
    onWorkerWithoutResult(
        [&] { RepeatedTaskHelper::instance()->setDueDateReminder(taskId, notificationType(type)); });
}

bool DataManager::hasDueRepeatedReminder(const QString& taskId, int type)
{
    return onWorker(
        [&] { return RepeatedTaskHelper::instance()->hasDueDateReminder(taskId, notificationType(type)); });
}

QVariantList DataManager::getDueRepeatedReminders(const QString& taskId)
{
    return onWorker([&] { return RepeatedTaskHelper::instance()->getDueDateReminders(taskId); });
}

int DataManager::getReminderCount()
{
    return onWorker([] { return notifications()->notificationCount(); });
}

void DataManager::scheduleReminder(const QVariantMap& taskInfo, int type)
{
    onWorkerWithoutResult([&] { notifications()->scheduleNotification(taskInfo, notificationType(type)); });
}

void DataManager::rescheduleReminders(const DOTask& oldTask, const DOTask& newTask)
{
    onWorkerWithoutResult([&] { notifications()->rescheduleReminders(oldTask, newTask); });
}

void DataManager::removeScheduledReminder(const QVariantMap& taskInfo, int type)
{
    onWorkerWithoutResult(
        [&] { notifications()->removeScheduledNotification(taskInfo, notificationType(type)); });
}

void DataManager::removeAllRemindersById(const QString& taskId)
{
    onWorkerWithoutResult([&] { notifications()->removeAllNotificationsById(taskId); });
}

bool DataManager::hasScheduledReminder(const QVariantMap& taskInfo, int type)
{
    return onWorker(
        [&] { return notifications()->hasScheduledNotification(taskInfo, notificationType(type)); });
}

bool DataManager::hasScheduledReminders(const QString& taskId)
{
    return onWorker([&] { return notifications()->hasScheduledNotifications(taskId); });
}

// Sorted lists, kept by the sorting manager on the database thread.

namespace {
SortingManager* sorting()
{
    return dataHandler->sortingManager();
}
} // namespace

SortedListInfo DataManager::getSortedListInfo(const QString& listId, ListType listType)
{
    return onWorker([&] { return sorting()->getSortedListInfo(listId, listType); });
}

void DataManager::setSortedList(const QString& listId, ListType listType, SortingType sortingType,
                                bool groupByDate)
{
    onWorkerWithoutResult([&] { sorting()->setSortedList(listId, listType, sortingType, groupByDate); });
}

void DataManager::setManualSortedList(const QString& listId, ListType listType, const OrderHash& orderHash)
{
    onWorkerWithoutResult([&] { sorting()->setManualSortedList(listId, listType, orderHash); });
}

void DataManager::deleteSortedList(const QString& listId, ListType listType)
{
    onWorkerWithoutResult([&] { sorting()->deleteSortedList(listId, listType); });
}

bool DataManager::hasSortedListInfo(const QString& listId, ListType listType)
{
    return onWorker([&] { return sorting()->hasSortedListInfo(listId, listType); });
}

SortingType DataManager::getSortingType(const QString& listId, ListType listType)
{
    return onWorker([&] { return sorting()->getSortingType(listId, listType); });
}

bool DataManager::getGroupByDateParam(const QString& listId, ListType listType)
{
    return onWorker([&] { return sorting()->getGroupByDateParam(listId, listType); });
}

// Account and sync, answered by the sync manager on the database thread.

bool DataManager::isUserLoggedIn()
{
    return onWorker([] { return SyncManager::instance()->isLoggedIn(); });
}

bool DataManager::isSyncActive()
{
    return onWorker([] { return SyncManager::instance()->isActive(); });
}

bool DataManager::isAccountOperationActive()
{
    return onWorker([] { return SyncManager::instance()->isRegistrationActive(); }) ||
           onWorker([] { return SyncManager::instance()->isCheckLoginActive(); }) ||
           onWorker([] { return SyncManager::instance()->resetPasswordActive(); }) ||
           onWorker([] { return SyncManager::instance()->changePasswordActive(); });
}

QDateTime DataManager::lastSyncDateTime()
{
    return onWorker([] { return SyncManager::instance()->lastSyncDateTime(); });
}

void DataManager::logout()
{
    onWorker([] {
        SyncManager::instance()->logout();
        RepeatedTaskHelper::instance()->clearReminders();
        NotificationManager::instance()->clearAll();
        sorting()->clearAll();
        return true;
    });
}

void DataManager::startSync()
{
    d->delayedSyncTimer->stop();
    onWorkerQueued([] { SyncManager::instance()->start(); });
}

void DataManager::startSyncSilent()
{
    d->delayedSyncTimer->stop();
    onWorkerQueued([] { SyncManager::instance()->startSilent(); });
}

void DataManager::abortSync()
{
    onWorker([] {
        SyncManager::instance()->abort();
        return true;
    });
}

void DataManager::registerUser(const QString& login, const QString& password)
{
    onWorkerQueued([login, password] { SyncManager::instance()->registerUser(login, password); });
}

void DataManager::checkLogin(const QString& login, const QString& password)
{
    onWorkerQueued([login, password] { SyncManager::instance()->checkLogin(login, password); });
}

void DataManager::resetPassword(const QString& login)
{
    onWorkerQueued([login] { SyncManager::instance()->resetPassword(login); });
}

void DataManager::changePassword(const QString& oldPassword, const QString& newPassword)
{
    onWorkerQueued(
        [oldPassword, newPassword] { SyncManager::instance()->changePassword(oldPassword, newPassword); });
}

void DataManager::requestIndicatorStateForDate(const QDateTime& dateTime)
{
    onWorkerQueued([dateTime] { dataHandler->requestIndicatorStateForDate(dateTime); });
}

void DataManager::startSyncDelayed()
{
    d->delayedSyncTimer->start();
}

void DataManager::cancelDelayedSync()
{
    d->delayedSyncTimer->stop();
}

void DataManager::cleanSortedLists()
{
    d->sortedListsCleanupTimer->start();
}

#include "datahandler.h"

#include "core/clock.h"
#include "core/logmanager.h"
#include "reminders/notificationmanager.h"
#include "services/repeatedtaskhelper.h"
#include "store/databasehandler.h"
#include "store/sortedlistcleaner.h"
#include "store/taskstore.h"
#include "sync/sortingmanager.h"
#include "sync/syncmanager.h"
#include "utilities/helper.h"

struct DataHandler::Private
{
    DatabaseHandler* database = nullptr;
    RepeatedTaskHelper* repeatedTaskHelper = nullptr;
    SortingManager* sortingManager = nullptr;
};

DataHandler::DataHandler()
    : d(std::make_unique<Private>())
{}

DataHandler::~DataHandler() = default;

void DataHandler::initialize()
{
    d->database = DatabaseHandler::instance();
    d->repeatedTaskHelper = RepeatedTaskHelper::instance();
    connect(SyncManager::instance(), &SyncManager::activeChanged, this,
            &DataHandler::handleSyncActiveChanged);
    d->sortingManager = new SortingManager(this);
    QLOG_INFO() << "Connecting to the database...";
    d->database->openDatabase(Helper::instance()->databaseFilePath());
    // Made here so that its timer and bus connection belong to this thread.
    NotificationManager::instance();
}

void DataHandler::requestIndicatorStateForDate(const QDateTime& dateTime)
{
    TaskStore* tasks = d->database->tasks();
    IndicatorState state;
    state.hasActiveTasks = tasks->hasActiveObjects(dateTime);
    // Overdue only means something for today; other days of the calendar never show it.
    state.hasOverdueTasks = dateTime.date() == Clock::currentDate() && tasks->hasOverdueTasks(dateTime);
    state.hasRepeatedTasks = d->repeatedTaskHelper->hasRepeatedTasks(dateTime.date());
    emit indicatorStateForDateChanged(dateTime, state);
}

SortingManager* DataHandler::sortingManager() const
{
    return d->sortingManager;
}

void DataHandler::cleanSortedLists()
{
    const SortingManager::SortedLists lists = d->sortingManager->getAllSortedLists();
    for (auto it = lists.cbegin(); it != lists.cend(); ++it) {
        const SortingManager::ListKey& list = it.key();
        if (SortedListCleaner::isObsolete(d->database, list.first, list.second))
            d->sortingManager->deleteSortedList(list.first, list.second);
    }
}

void DataHandler::handleSyncActiveChanged(bool active)
{
    if (active)
        return;
    // Queued, so that the sorted-list sync starts once the main sync has fully ended.
    QMetaObject::invokeMethod(d->sortingManager, &SortingManager::sync, Qt::QueuedConnection);
    emit mainSyncFinished();
}

#include "datahandler.h"

#include "core/clock.h"
#include "core/logmanager.h"
#include "reminders/notificationmanager.h"
#include "services/repeatedtaskhelper.h"
#include "store/databasehandler.h"
#include "store/sortedlistcleaner.h"
#include "store/taskstore.h"
#include "sync/syncmanager.h"
#include "utilities/helper.h"

#include <QList>
#include <QPair>

namespace {
using SortedListKey = QPair<QString, SortingNamespace::ListType>;

// Sorted lists are kept by the sorting manager, which is not part of the program yet: until it is,
// no list is stored and none can be dropped.
QList<SortedListKey> storedSortedLists()
{
    return {};
}

void dropSortedList(const SortedListKey&) {}
} // namespace

struct DataHandler::Private
{
    DatabaseHandler* database = nullptr;
    RepeatedTaskHelper* repeatedTaskHelper = nullptr;
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

void DataHandler::cleanSortedLists()
{
    for (const SortedListKey& list : storedSortedLists()) {
        if (SortedListCleaner::isObsolete(d->database, list.first, list.second))
            dropSortedList(list);
    }
}

void DataHandler::handleSyncActiveChanged(bool active)
{
    if (active)
        return;
    // The reminders and sorted-list syncs, once they exist, are queued here so that they always
    // follow a finished main sync.
    emit mainSyncFinished();
}

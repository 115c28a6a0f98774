#include "daylistprobe.h"
#include "lifetimedatabase.h"

#include "core/clock.h"
#include "core/settings.h"
#include "models/dailyplanlistmodel.h"
#include "models/dailyplansortmodel.h"
#include "store/databasehandler.h"
#include "store/datamanager.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <map>
#include <memory>

// A heavy but real user: years of tasks, most of them completed, as LifetimeDatabase makes them.
// Each benchmark works through DataManager on the database thread, as the interface does.

namespace {

const LifetimeDatabase& lifetimeDatabase(int taskCount)
{
    // Made once per size; the benchmarks that write work on copies.
    static std::map<int, std::unique_ptr<LifetimeDatabase>> made;
    std::unique_ptr<LifetimeDatabase>& database = made[taskCount];
    if (!database)
        database = std::make_unique<LifetimeDatabase>(taskCount, Clock::currentDate());
    return *database;
}

// A private copy of the database, opened as the application's one connection.
class AttachedCopy
{
public:
    explicit AttachedCopy(const LifetimeDatabase& database)
    {
        m_ready = database.isReady() && QFile::copy(database.filePath(), filePath()) && reopen();
        // The first read puts the dates of repeating rows in order, as the first start of a new
        // version would; the benchmarks then measure reads that write nothing.
        DataManager::instance()->getDayTasks(Clock::currentDate());
        DataManager::instance()->commitChanges();
    }

    bool isReady() const { return m_ready; }

    // Opens the copy anew, as at start-up.
    bool reopen() const
    {
        const QString filePath = this->filePath();
        DataManager::instance();
        DatabaseHandler* handler = DatabaseHandler::instance();
        bool opened = false;
        QMetaObject::invokeMethod(
            handler,
            [handler, &filePath, &opened] {
                handler->disconnectDatabase();
                opened = handler->openDatabase(filePath);
            },
            Qt::BlockingQueuedConnection);
        return opened;
    }

private:
    QString filePath() const { return m_directory.filePath(QStringLiteral("norvel_data.db")); }

    QTemporaryDir m_directory;
    bool m_ready = false;
};

QList<QVariantMap> todaysTasks()
{
    return DataManager::instance()->getDayTasks(Clock::currentDate());
}

// The daily plan's pair as TaskHandler::getDayTasks builds it for the page: the day's objects in their
// groups and a sort model with the day's sorting settings that hides completed tasks, and the merely
// available ones too, as the settings say.
struct DayList
{
    explicit DayList(ListModel::DataFunction dataFunction)
    {
        const QDate today = Clock::currentDate();
        sortModel.setExcludeCompletedObjectsType(SortModel::ExcludeCompletedTasks);
        sortModel.setExcludeFutureTasks(!Settings::instance()->isShowFutureTasks());
        sortModel.setModelType(SortingNamespace::ListTypeDailyPlan,
                               today.toString(QStringLiteral("ddMMyyyy")));
        list = std::make_unique<DailyPlanListModel>(today, std::move(dataFunction));
        sortModel.setSourceModel(list.get());
    }

    std::unique_ptr<DailyPlanListModel> list;
    DailyPlanSortModel sortModel;
};

bool skipUnless(benchmark::State& state, bool ready)
{
    if (!ready)
        state.SkipWithError("the lifetime database could not be prepared");
    return !ready;
}

void lifetimeDayTasks(benchmark::State& state)
{
    const AttachedCopy database(lifetimeDatabase(int(state.range(0))));
    if (skipUnless(state, database.isReady()))
        return;
    int rows = 0;
    for (auto _ : state)
        rows = todaysTasks().size();
    state.counters["rows"] = rows;
}

// The read a list makes after one of its tasks changed, the most common read of all.
void lifetimeDayTasksAfterARename(benchmark::State& state)
{
    const LifetimeDatabase& lifetime = lifetimeDatabase(int(state.range(0)));
    const AttachedCopy database(lifetime);
    if (skipUnless(state, database.isReady() && !lifetime.taskDueTodayId().isEmpty()))
        return;
    DOTask task = DataManager::instance()->getTaskById(lifetime.taskDueTodayId());
    int rows = 0;
    int renames = 0;
    for (auto _ : state) {
        state.PauseTiming();
        task.insert(QStringLiteral("NAME"), QStringLiteral("Renamed %1").arg(++renames));
        DataManager::instance()->updateTaskLocally(task);
        DataManager::instance()->commitChanges();
        state.ResumeTiming();
        rows = todaysTasks().size();
    }
    state.counters["rows"] = rows;
}

// The first read after the file was opened, as at start-up, when no row has been read yet.
void lifetimeDayTasksAfterOpening(benchmark::State& state)
{
    const AttachedCopy database(lifetimeDatabase(int(state.range(0))));
    if (skipUnless(state, database.isReady()))
        return;
    int rows = 0;
    for (auto _ : state) {
        state.PauseTiming();
        database.reopen();
        state.ResumeTiming();
        rows = todaysTasks().size();
    }
    state.counters["rows"] = rows;
}

void lifetimeDayListFirstFill(benchmark::State& state)
{
    const AttachedCopy database(lifetimeDatabase(int(state.range(0))));
    if (skipUnless(state, database.isReady()))
        return;
    int rows = 0;
    for (auto _ : state) {
        DayList dayList(todaysTasks);
        rows = dayList.sortModel.rowCount();
    }
    state.counters["rows"] = rows;
}

// The models' share of the first fill: the same pair over an answer already read.
void lifetimeDayListFirstFillFromAnswer(benchmark::State& state)
{
    const AttachedCopy database(lifetimeDatabase(int(state.range(0))));
    if (skipUnless(state, database.isReady()))
        return;
    const QList<QVariantMap> answer = todaysTasks();
    int rows = 0;
    for (auto _ : state) {
        DayList dayList([&answer] { return answer; });
        rows = dayList.sortModel.rowCount();
    }
    state.counters["rows"] = rows;
}

// One refresh of a day list after a change to one task was written. Both answers of the data function
// come from real reads, so that every map is new to the list as after any read; the read itself is
// measured by lifetimeDayTasks and left out here.
void refreshAfterChange(benchmark::State& state, const std::function<void(DOTask&)>& change)
{
    const LifetimeDatabase& lifetime = lifetimeDatabase(int(state.range(0)));
    const AttachedCopy database(lifetime);
    if (skipUnless(state, database.isReady() && !lifetime.taskDueTodayId().isEmpty()))
        return;
    const QList<QVariantMap> before = todaysTasks();
    DOTask task = DataManager::instance()->getTaskById(lifetime.taskDueTodayId());
    change(task);
    DataManager::instance()->updateTaskLocally(task);
    DataManager::instance()->commitChanges();
    const QList<QVariantMap> after = todaysTasks();

    const QList<QVariantMap>* answer = &before;
    DayList dayList([&answer] { return *answer; });
    for (auto _ : state) {
        answer = answer == &before ? &after : &before;
        dayList.list->update();
    }
    state.counters["rows"] = dayList.sortModel.rowCount();
}

void lifetimeDayListRefreshAfterRename(benchmark::State& state)
{
    refreshAfterChange(state,
                       [](DOTask& task) { task.insert(QStringLiteral("NAME"), QStringLiteral("Renamed")); });
}

void lifetimeDayListRefreshAfterCompletion(benchmark::State& state)
{
    refreshAfterChange(state,
                       [](DOTask& task) { task.insert(QStringLiteral("STATE"), COMPLETED_OBJECT_STATE); });
}

void lifetimeBusiestProjectTasks(benchmark::State& state)
{
    const LifetimeDatabase& lifetime = lifetimeDatabase(int(state.range(0)));
    const AttachedCopy database(lifetime);
    if (skipUnless(state, database.isReady()))
        return;
    int rows = 0;
    for (auto _ : state)
        rows = DataManager::instance()->getProjectTasks(lifetime.busiestProjectId()).size();
    state.counters["rows"] = rows;
}

// Peak resident memory of a process that opened the database and shows today's list.
void lifetimeDayListPeakMemory(benchmark::State& state)
{
    const LifetimeDatabase& lifetime = lifetimeDatabase(int(state.range(0)));
    long peakKib = -1;
    for (auto _ : state)
        peakKib = DayListProbe::peakKibWithDayList(lifetime.filePath());
    if (peakKib < 0)
        state.SkipWithError("the probe process failed");
    state.counters["peak_MiB"] = double(peakKib) / 1024.0;
}

} // namespace

// The largest size runs a few iterations only, so that the whole program stays within minutes.
#define LIFETIME_BENCHMARK(function, largeIterations)                                                        \
    BENCHMARK(function)->Arg(10000)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);                 \
    BENCHMARK(function)                                                                                      \
        ->Arg(100000)                                                                                        \
        ->Iterations(largeIterations)                                                                        \
        ->MeasureProcessCPUTime()                                                                            \
        ->Unit(benchmark::kMillisecond)

LIFETIME_BENCHMARK(lifetimeDayTasks, 10);
LIFETIME_BENCHMARK(lifetimeDayTasksAfterARename, 10);
LIFETIME_BENCHMARK(lifetimeDayTasksAfterOpening, 5);
LIFETIME_BENCHMARK(lifetimeDayListFirstFill, 5);
LIFETIME_BENCHMARK(lifetimeDayListFirstFillFromAnswer, 5);
LIFETIME_BENCHMARK(lifetimeDayListRefreshAfterRename, 10);
LIFETIME_BENCHMARK(lifetimeDayListRefreshAfterCompletion, 10);
LIFETIME_BENCHMARK(lifetimeBusiestProjectTasks, 10);
BENCHMARK(lifetimeDayListPeakMemory)->Arg(10000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

#include "benchdatabase.h"
#include "core/clock.h"
#include "models/dailyplansortmodel.h"
#include "services/taskhandler.h"
#include "store/datamanager.h"
#include "utilities/helper.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

// The application's own database, filled with `taskCount` generated tasks unless it holds them
// already. The data manager opens it on first use, so the file is in place before.
bool prepareDatabase(int taskCount)
{
    static int filledCount = -1;
    if (filledCount == taskCount)
        return true;
    Helper* helper = Helper::instance();
    if (!helper->databaseExists() &&
        !(QDir().mkpath(QFileInfo(helper->databaseFilePath()).path()) && helper->unpackDatabase()))
        return false;
    BenchDatabase::Shape shape;
    shape.taskCount = taskCount;
    shape.today = Clock::currentDate();
    if (!BenchDatabase::fill(helper->databaseFilePath(), shape))
        return false;
    filledCount = taskCount;
    return DataManager::instance()->isDataPrepared();
}

TaskHandler& taskHandler()
{
    static TaskHandler handler;
    return handler;
}

// From the call to a sorted, counted model of today, as the daily plan page receives it.
void dayModelOfToday(benchmark::State& state)
{
    if (!prepareDatabase(int(state.range(0)))) {
        state.SkipWithError("the database could not be filled");
        return;
    }
    int sourceRows = 0;
    int visibleRows = 0;
    for (auto _ : state) {
        auto* model = qvariant_cast<DailyPlanSortModel*>(taskHandler().getDayTasks(Clock::currentDate()));
        state.PauseTiming();
        sourceRows = model->sourceModel()->rowCount();
        visibleRows = model->rowCount();
        QAbstractItemModel* source = model->sourceModel();
        delete model;
        delete source;
        state.ResumeTiming();
    }
    state.counters["source rows"] = sourceRows;
    state.counters["visible rows"] = visibleRows;
}

// The day's records alone, as the list model's data function reads them: the part of the model's
// time that the database thread spends.
void dayRecordsOfToday(benchmark::State& state)
{
    if (!prepareDatabase(int(state.range(0)))) {
        state.SkipWithError("the database could not be filled");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(DataManager::instance()->getDayTasks(Clock::currentDate()));
}

void overdueCountOfToday(benchmark::State& state)
{
    if (!prepareDatabase(int(state.range(0)))) {
        state.SkipWithError("the database could not be filled");
        return;
    }
    int overdue = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(overdue = taskHandler().getOverdueDayTaskCount(Clock::currentDateTime()));
    state.counters["overdue"] = overdue;
}

// The database filled once per size, each time in one transaction.
void fillDatabase(benchmark::State& state)
{
    BenchDatabase::Shape shape;
    shape.taskCount = int(state.range(0));
    shape.today = Clock::currentDate();
    const QTemporaryDir directory;
    const QString filePath = directory.filePath(QStringLiteral("norvel_data.db"));
    QFile::copy(QStringLiteral(":/norvel_data.db"), filePath);
    QFile::setPermissions(filePath, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    for (auto _ : state) {
        if (!BenchDatabase::fill(filePath, shape))
            state.SkipWithError("the database could not be filled");
    }
}

} // namespace

// Both sizes. The work is shared with the database thread: CPU time counts both threads, and the
// iterations follow the wall clock.
void onBothSizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
}

BENCHMARK(fillDatabase)->Apply(onBothSizes)->Iterations(1);
BENCHMARK(dayModelOfToday)->Apply(onBothSizes);
BENCHMARK(dayRecordsOfToday)->Apply(onBothSizes);
BENCHMARK(overdueCountOfToday)->Apply(onBothSizes);

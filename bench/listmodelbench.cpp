#include "models/listmodel.h"
#include "models/sortmodel.h"

#include <benchmark/benchmark.h>

#include <QDateTime>
#include <QRandomGenerator>

namespace {

// A task as the store reads it: every map has its own key strings, TIMESTAMP is text, and an undated
// task carries empty texts for its dates.
QVariantMap makeTask(int number, QRandomGenerator& random)
{
    const QDateTime due =
        QDateTime(QDate(2024, 1, 1), QTime(0, 0), Qt::UTC).addSecs(qint64(random.bounded(365 * 24)) * 3600);
    const int dates = random.bounded(3);
    const QList<QPair<const char*, QVariant>> columns{
        {"id", QStringLiteral("%1-8d12-4482-a142-d02efefe8bbc").arg(number, 8, 16, QLatin1Char('0'))},
        {"name", QStringLiteral("Task %1").arg(number)},
        {"parent", QStringLiteral("f206bbf9-8d12-4482-a142-d02efefe8bbc")},
        {"memo", QString()},
        {"start", dates > 1 ? QVariant(due.addDays(-3)) : QVariant(QString())},
        {"due", dates > 0 ? QVariant(due) : QVariant(QString())},
        {"context", QString()},
        {"period", QString()},
        {"state", 0},
        {"timestamp", QString::number(1700000000 + random.bounded(10000000))},
        {"synced", 1},
        {"local", 0}};
    QVariantMap task;
    for (const auto& column : columns)
        task.insert(QString::fromLatin1(column.first).toUpper(), column.second);
    return task;
}

QList<QVariantMap> makeTasks(int count)
{
    QRandomGenerator random(42);
    QList<QVariantMap> tasks;
    tasks.reserve(count);
    for (int number = 0; number < count; ++number)
        tasks.append(makeTask(number, random));
    return tasks;
}

// A list of `rows` tasks under a sort model whose data function alternates between the base list and
// a changed copy, so that every update carries the same change.
void runUpdates(benchmark::State& state, const std::function<void(QList<QVariantMap>&)>& change)
{
    const QList<QVariantMap> base = makeTasks(int(state.range(0)));
    QList<QVariantMap> changed = base;
    change(changed);
    const QList<QVariantMap>* current = &base;
    ListModel source([&current] { return *current; });
    SortModel sortModel;
    sortModel.setSourceModel(&source);

    for (auto _ : state) {
        current = current == &base ? &changed : &base;
        source.update();
    }
    state.counters["rows"] = double(sortModel.rowCount());
}

// The diff alone, without a sort model above it.
void updateWithoutSortModel(benchmark::State& state)
{
    const QList<QVariantMap> tasks = makeTasks(int(state.range(0)));
    ListModel source([&tasks] { return tasks; });

    for (auto _ : state)
        source.update();
}

void updateWithNothingChanged(benchmark::State& state)
{
    runUpdates(state, [](QList<QVariantMap>&) {});
}

void updateWithOneRowRenamed(benchmark::State& state)
{
    runUpdates(state, [](QList<QVariantMap>& tasks) {
        tasks[tasks.size() / 2].insert(QStringLiteral("NAME"), QStringLiteral("Renamed"));
    });
}

void updateWithOnePercentCompleted(benchmark::State& state)
{
    runUpdates(state, [](QList<QVariantMap>& tasks) {
        for (int row = 0; row < tasks.size(); row += 100)
            tasks[row].insert(QStringLiteral("STATE"), 2);
    });
}

} // namespace

BENCHMARK(updateWithoutSortModel)->Arg(1000)->Arg(10000)->Arg(50000)->Unit(benchmark::kMillisecond);
BENCHMARK(updateWithNothingChanged)->Arg(1000)->Arg(10000)->Arg(50000)->Unit(benchmark::kMillisecond);
BENCHMARK(updateWithOneRowRenamed)->Arg(1000)->Arg(10000)->Arg(50000)->Unit(benchmark::kMillisecond);
BENCHMARK(updateWithOnePercentCompleted)->Arg(1000)->Arg(10000)->Arg(50000)->Unit(benchmark::kMillisecond);

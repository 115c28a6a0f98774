#include "models/listmodel.h"
#include "models/searchsortfiltermodel.h"

#include <benchmark/benchmark.h>

#include <QRandomGenerator>
#include <QStringList>

namespace {

const QStringList words{"Call",    "review", "Buy",     "report", "garden", "meeting", "plan",  "invoice",
                        "Repair",  "book",   "trip",    "draft",  "email",  "budget",  "clean", "order",
                        "Prepare", "slides", "dentist", "car",    "taxes",  "Read",    "notes", "team"};

QString phrase(QRandomGenerator& random, int wordCount)
{
    QStringList picked;
    for (int word = 0; word < wordCount; ++word)
        picked << words.at(random.bounded(words.size()));
    return picked.join(QLatin1Char(' '));
}

// The store's mix: mostly tasks, some with memos and some completed, then projects, folders and contexts.
// Every map has its own key strings, as maps read from the database do.
QVariantMap makeObject(int number, QRandomGenerator& random)
{
    QVariantMap object;
    const auto set = [&object](const char* key, const QVariant& value) {
        object.insert(QString::fromLatin1(key), value);
    };
    set("ID", QStringLiteral("%1-8d12-4482-a142-d02efefe8bbc").arg(number, 8, 16, QLatin1Char('0')));
    set("NAME", QStringLiteral("%1 %2").arg(phrase(random, 1 + random.bounded(4))).arg(number));
    set("MEMO", random.bounded(4) == 0 ? phrase(random, 12) : QString());
    set("STATE", random.bounded(10) == 0 ? 2 : 0);
    set("TIMESTAMP", QString::number(1700000000 + number));
    set("PARENT", QString());
    const int kind = number % 50;
    if (kind < 44) {
        set("PERIOD", QString());
        set("CONTEXT", QString());
    } else if (kind < 48) {
        set("CONTEXT", QString());
        set("FOLDER", kind == 47);
    }
    return object;
}

QList<QVariantMap> makeObjects(int count)
{
    QRandomGenerator random(7);
    QList<QVariantMap> objects;
    objects.reserve(count);
    for (int number = 0; number < count; ++number)
        objects.append(makeObject(number, random));
    return objects;
}

// One keystroke of the main search: a new string, then filtering and sorting everything in memory.
void typeKeystrokes(benchmark::State& state, const QStringList& typed)
{
    const QList<QVariantMap> objects = makeObjects(int(state.range(0)));
    ListModel source([&objects] { return objects; });
    SearchSortFilterModel model(false);
    model.setSourceModel(&source);
    model.setExcludeCompletedTasks(true);

    int keystroke = 0;
    for (auto _ : state) {
        model.setSearchString(typed.at(keystroke++ % typed.size()));
        // The proxy filters and sorts when a view next asks for the rows.
        benchmark::DoNotOptimize(model.rowCount());
    }
    state.counters["hits"] = double(model.rowCount());
}

// Typing a word in the middle of names and memos.
void searchTypingAWord(benchmark::State& state)
{
    typeKeystrokes(state, {"re", "rep", "repo", "repor", "report"});
}

// A single letter matches most objects, so nearly everything is sorted.
void searchSingleLetter(benchmark::State& state)
{
    typeKeystrokes(state, {"e", "a"});
}

} // namespace

BENCHMARK(searchTypingAWord)->Arg(50000)->Unit(benchmark::kMillisecond);
BENCHMARK(searchSingleLetter)->Arg(50000)->Unit(benchmark::kMillisecond);

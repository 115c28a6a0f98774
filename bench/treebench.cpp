#include "models/projecttreesortmodel.h"
#include "models/treemodel.h"
#include "store/treehierarchybuilder.h"
#include "utilities/helper.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QVector>

namespace {

// The tree sort reads the lists' sorting settings through the data manager, which needs its file.
bool prepareDatabase()
{
    // Another benchmark of the same run may have unpacked it already.
    const QFileInfo database(Helper::instance()->databaseFilePath());
    static const bool prepared =
        database.exists() || (QDir().mkpath(database.path()) && Helper::instance()->unpackDatabase());
    return prepared;
}

QVariantMap makeObject(const QString& id, const QString& parentId, int level, bool folder, int number)
{
    return {{QStringLiteral("ID"), id},
            {QStringLiteral("NAME"), QStringLiteral("Object %1").arg(number)},
            {QStringLiteral("PARENT"), parentId},
            {QStringLiteral("LEVEL"), level},
            {QStringLiteral("FOLDER"), folder},
            {QStringLiteral("CONTEXT"), QString()},
            {QStringLiteral("STATE"), 0},
            {QStringLiteral("START"), QVariant()},
            {QStringLiteral("DUE"), QVariant()},
            {QStringLiteral("TIMESTAMP"), QString::number(1700000000 + number)}};
}

// Folders three levels deep with projects spread over them and the root, ordered by level as the
// store's query delivers them.
QList<DataObject> makeTreeRows(int count)
{
    QRandomGenerator random(11);
    const int folderCount = count / 10;
    QVector<QList<DataObject>> rowsByLevel(4);
    QVector<QStringList> foldersByLevel(3);
    for (int number = 0; number < count; ++number) {
        const bool folder = number < folderCount;
        const int level = folder ? number % 3 : 1 + random.bounded(3);
        const QStringList& parents = foldersByLevel.at(level - 1 < 0 ? 0 : level - 1);
        const bool atRoot = level == 0 || parents.isEmpty();
        const QString parentId = atRoot ? QString() : parents.at(random.bounded(parents.size()));
        const QString id = QStringLiteral("object-%1").arg(number);
        const int actualLevel = atRoot ? 0 : level;
        rowsByLevel[actualLevel].append(makeObject(id, parentId, actualLevel, folder, number));
        if (folder && actualLevel < 3)
            foldersByLevel[actualLevel].append(id);
    }
    QList<DataObject> rows;
    for (const QList<DataObject>& level : qAsConst(rowsByLevel))
        rows += level;
    return rows;
}

void openAllFolders(TreeSortModel& sortModel, const TreeHierarchy& tree)
{
    for (int level = 0; level < 3; ++level) {
        for (const DataObject& object : tree.objectById) {
            if (object.value(QStringLiteral("LEVEL")).toInt() == level &&
                object.value(QStringLiteral("FOLDER")).toBool())
                sortModel.openItem(object.value(QStringLiteral("ID")).toString());
        }
    }
}

// Building the pair, opening every folder level by level, each opening sorted as it comes.
void projectTreeOpenedFully(benchmark::State& state)
{
    if (!prepareDatabase())
        state.SkipWithError("no database");
    const TreeHierarchy tree = TreeHierarchyBuilder::build(makeTreeRows(int(state.range(0))));
    int rows = 0;
    for (auto _ : state) {
        TreeModel source([&tree] { return tree; });
        ProjectTreeSortModel sortModel;
        sortModel.setSourceModel(&source);
        openAllFolders(sortModel, tree);
        rows = sortModel.rowCount();
    }
    state.counters["rows"] = rows;
}

// The fully opened tree taken through one step in a loop: sorted again, as a page does after a sync
// of sorted lists, or refreshed, as it does after every change of a project or folder.
void openedProjectTree(benchmark::State& state, void (*step)(ProjectTreeSortModel&))
{
    if (!prepareDatabase())
        state.SkipWithError("no database");
    const TreeHierarchy tree = TreeHierarchyBuilder::build(makeTreeRows(int(state.range(0))));
    TreeModel source([&tree] { return tree; });
    ProjectTreeSortModel sortModel;
    sortModel.setSourceModel(&source);
    openAllFolders(sortModel, tree);
    for (auto _ : state)
        step(sortModel);
    state.counters["rows"] = sortModel.rowCount();
}

void resort(ProjectTreeSortModel& sortModel)
{
    sortModel.sort();
}

void refresh(ProjectTreeSortModel& sortModel)
{
    sortModel.update();
}
} // namespace

BENCHMARK(projectTreeOpenedFully)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(openedProjectTree, resorted, resort)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(openedProjectTree, refreshed, refresh)->Arg(2000)->Unit(benchmark::kMillisecond);

#include "models/sortmodel.h"
#include "core/settings.h"
#include "models/contexttasksortmodel.h"
#include "models/listmodel.h"
#include "models/manualorder.h"
#include "models/nocontexttaskslistmodel.h"
#include "models/nocontexttaskssortmodel.h"
#include "models/projectfoldersortmodel.h"
#include "models/rootcontextslistmodel.h"
#include "testlib/recordbuilder.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QSignalSpy>
#include <QtTest>

Q_DECLARE_METATYPE(SortModel::ExcludeType)

namespace {

using Records = QList<QVariantMap>;

QDateTime day(int dayOfMonth)
{
    return wallClock(QDate(2024, 3, dayOfMonth), QTime(12, 0));
}

RecordBuilder stamped(RecordBuilder record, const QString& id, uint timestamp)
{
    return record.withId(id).withTimestamp(timestamp);
}
const auto task = [](const QString& id, uint stamp) { return stamped(RecordBuilder::task(), id, stamp); };
const auto project = [](const QString& id, uint stamp) {
    return stamped(RecordBuilder::project(), id, stamp);
};
const auto folder = [](const QString& id, uint stamp) { return stamped(RecordBuilder::folder(), id, stamp); };
const auto context = [](const QString& id, uint stamp) {
    return stamped(RecordBuilder::context(), id, stamp);
};

QStringList idsOf(const QAbstractItemModel& model)
{
    QStringList ids;
    for (int row = 0; row < model.rowCount(); ++row)
        ids << model.index(row, 0).data(ListModel::listItemRole).toMap().value("ID").toString();
    return ids;
}

QStringList ids(const char* spaced)
{
    return QString::fromLatin1(spaced).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// A sort model of the given kind, as the services hand them out, over a list of the records it owns.
std::unique_ptr<SortModel> sortModelOf(const QString& kind, const Records& records,
                                       const SortedListInfo& info = {},
                                       SortModel::ExcludeType exclude = SortModel::ExcludeCompletedProjects)
{
    std::unique_ptr<SortModel> sortModel;
    if (kind == "project folder")
        sortModel = std::make_unique<ProjectFolderSortModel>();
    else if (kind == "context task")
        sortModel = std::make_unique<ContextTaskSortModel>();
    else if (kind == "root contexts")
        sortModel = std::make_unique<RootContextsListModel>();
    else if (kind == "no context")
        sortModel = std::make_unique<NoContextTasksSortModel>();
    else
        sortModel = std::make_unique<SortModel>();
    const auto function = [records] { return records; };
    sortModel->setSortedListInfo(info);
    sortModel->setExcludeCompletedObjectsType(exclude);
    sortModel->setSourceModel(kind == "no context" ? new NoContextTasksListModel(function, sortModel.get())
                                                   : new ListModel(function, sortModel.get()));
    return sortModel;
}

// Hides the rows it is told to, as the daily plan hides the projects of the day.
class HidingSortModel : public SortModel
{
public:
    QStringList hiddenIds;

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override
    {
        const QVariantMap object = recordAt(sourceModel()->index(sourceRow, 0, sourceParent));
        return !hiddenIds.contains(object.value(QStringLiteral("ID")).toString()) &&
               SortModel::filterAcceptsRow(sourceRow, sourceParent);
    }
};

} // namespace

class SortModelTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        Settings::instance()->setShowCompletedTasks(true);
        Settings::instance()->setShowCompletedProjects(true);
    }

    void rowsFollowTheSortingRules_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<Records>("records");
        QTest::addColumn<SortedListInfo>("info");
        QTest::addColumn<QStringList>("expected");

        const SortedListInfo asc; // time stamps ascending, grouped by date
        const SortedListInfo alphabetical(SortingNamespace::AlphabeticalType, {}, QDateTime(), false);
        const auto manual = [](const SortingNamespace::OrderHash& order) {
            return SortedListInfo(SortingNamespace::ManualType, order, QDateTime(), false);
        };
        const QString osaId = QString::fromLatin1(RecordBuilder::oneStepActionsId);

        QTest::newRow("state order: active, deleted, completed, completed and deleted")
            << "base"
            << Records{task("done-deleted", 1).withState(3), task("done", 2).withState(2),
                       task("gone", 3).withState(1), task("open", 4).withState(0)}
            << asc << ids("open gone done done-deleted");
        QTest::newRow("deleted rows by time, then level, then name, whatever the sorting")
            << "base"
            << Records{task("old", 10).withState(1).named("A"),
                       task("child", 20).withState(1).withLevel(1).named("A"),
                       task("parent", 20).withState(1).withLevel(0).named("Z"),
                       task("beta", 30).withState(1).named("Beta"),
                       task("alpha", 30).withState(1).named("alpha")}
            << alphabetical << ids("alpha beta parent child old");
        QTest::newRow("descending time stamps")
            << "base" << Records{task("c", 3), task("a", 1), task("b", 2)}
            << SortedListInfo(SortingNamespace::TimestampDescType) << ids("c b a");
        QTest::newRow("numeric collation: Task 2 before Task 10")
            << "base" << Records{task("ten", 1).named("Task 10"), task("two", 2).named("Task 2")}
            << alphabetical << ids("two ten");
        const auto textStamped = [](const char* id, const char* timestamp) -> QVariantMap {
            return task(id, 0).with(QStringLiteral("TIMESTAMP"), QString::fromLatin1(timestamp));
        };
        QTest::newRow("time stamps stored as text compare as numbers")
            << "base"
            << Records{textStamped("large", "1700000000"), textStamped("small", "85"),
                       textStamped("signed", "+90"), textStamped("middle", "900")}
            << asc << ids("small signed middle large");
        QTest::newRow("ties broken by ID")
            << "base" << Records{task("b", 5), task("c", 5), task("a", 5)} << asc << ids("a b c");
        QTest::newRow("manual positions; rows without one by the date group")
            << "base"
            << Records{task("a", 10), task("b", 40), task("c", 30), task("d", 50).dueAt(day(3)),
                       task("e", 60).dueAt(day(9))}
            << manual({{"c", 0}, {"a", 1}}) << ids("d e c a b");
        QTest::newRow("manual positions do not outrank state")
            << "base" << Records{task("a", 1).withState(2), task("b", 2)} << manual({{"a", 0}, {"b", 1}})
            << ids("b a");
        QTest::newRow("folders before projects, single-actions project last")
            << "project folder"
            << Records{project(osaId, 0), project("p", 1), folder("f", 2), project("q", 3)} << asc
            << ids("f p q") + QStringList{osaId};
        QTest::newRow("manual position beats the folder rule")
            << "project folder" << Records{project("p", 1), folder("f", 2), folder("g", 3)}
            << manual({{"p", 0}, {"f", 1}}) << ids("p f g");
        QTest::newRow("No context last")
            << "root contexts"
            << Records{context("", 0).named("No context"), context("b", 2), context("a", 1)} << asc
            << QStringList{"a", "b", ""};
        QTest::newRow("contexts, then projects, then tasks")
            << "context task"
            << Records{task("t", 1), project("p", 2), folder("f", 3), context("c", 4), task("u", 0)} << asc
            << ids("c p f u t");
        QTest::newRow("no-context tasks: inbox, single actions, then by time stamp")
            << "no context"
            << Records{task("late-project", 5).inParent("p1"), task("early-project", 3).inParent("p2"),
                       task("single", 8).inParent(osaId), task("inbox-due", 9).dueAt(day(4)),
                       task("inbox-undated", 1)}
            << asc << ids("inbox-due inbox-undated single early-project late-project");
    }

    void rowsFollowTheSortingRules()
    {
        QFETCH(QString, kind);
        QFETCH(Records, records);
        QFETCH(SortedListInfo, info);
        const std::unique_ptr<SortModel> sortModel = sortModelOf(kind, records, info);
        QAbstractItemModelTester tester(sortModel.get());

        QTEST(idsOf(*sortModel), "expected");
    }

    void completedFilterFollowsTheChosenSetting_data()
    {
        QTest::addColumn<SortModel::ExcludeType>("excludeType");
        QTest::addColumn<bool>("showCompletedProjects");
        QTest::addColumn<bool>("showCompletedTasks");
        QTest::addColumn<QStringList>("expected");

        const auto projects = SortModel::ExcludeCompletedProjects;
        const auto tasks = SortModel::ExcludeCompletedTasks;
        const QStringList all = ids("open done-task done-project done-deleted");
        const QStringList withoutCompleted = ids("open done-deleted");
        QTest::newRow("project filter, projects shown") << projects << true << false << all;
        QTest::newRow("project filter, projects hidden") << projects << false << true << withoutCompleted;
        QTest::newRow("task filter, tasks shown") << tasks << false << true << all;
        QTest::newRow("task filter, tasks hidden") << tasks << true << false << withoutCompleted;
    }

    void completedFilterFollowsTheChosenSetting()
    {
        QFETCH(SortModel::ExcludeType, excludeType);
        QFETCH(bool, showCompletedProjects);
        QFETCH(bool, showCompletedTasks);
        Settings::instance()->setShowCompletedProjects(showCompletedProjects);
        Settings::instance()->setShowCompletedTasks(showCompletedTasks);
        const Records records{task("done-task", 1).withState(2), task("open", 2),
                              project("done-project", 3).withState(2), task("done-deleted", 4).withState(3)};

        const std::unique_ptr<SortModel> sortModel = sortModelOf("base", records, {}, excludeType);
        QAbstractItemModelTester tester(sortModel.get());

        QTEST(idsOf(*sortModel), "expected");
        QCOMPARE(sortModel->activeObjectCount(), 1);
    }

    void moveItemComputesShiftedPositions_data()
    {
        QTest::addColumn<int>("oldIndex");
        QTest::addColumn<int>("newIndex");
        QTest::addColumn<QList<int>>("positions");

        QTest::newRow("down: rows in between move up") << 1 << 3 << QList<int>{0, 3, 1, 2, 4};
        QTest::newRow("up: rows in between move down") << 3 << 1 << QList<int>{0, 2, 3, 1, 4};
        QTest::newRow("first to last") << 0 << 4 << QList<int>{4, 0, 1, 2, 3};
    }

    void moveItemComputesShiftedPositions()
    {
        QFETCH(int, oldIndex);
        QFETCH(int, newIndex);
        QFETCH(QList<int>, positions);
        const QStringList visibleIds = ids("a b c d e");

        const SortingNamespace::OrderHash order = ManualOrder::afterMove(visibleIds, oldIndex, newIndex);

        SortingNamespace::OrderHash expected;
        for (int row = 0; row < visibleIds.size(); ++row)
            expected.insert(visibleIds.at(row), positions.at(row));
        QCOMPARE(order, expected);
    }

    void rowsFollowChangesOfTheirRecords_data()
    {
        QTest::addColumn<SortedListInfo>("info");
        QTest::addColumn<Records>("initial");
        QTest::addColumn<Records>("changed");
        QTest::addColumn<bool>("showCompleted");
        QTest::addColumn<QStringList>("expected");

        const SortedListInfo alphabetical(SortingNamespace::AlphabeticalType, {}, QDateTime(), false);
        const auto row = [](const QString& id, uint stamp, int dueDay, const QString& name) {
            return task(id, stamp).dueAt(day(dueDay)).named(name);
        };
        const Records dated{row("a", 1, 5, "Apple"), row("b", 2, 6, "Banana"), row("c", 3, 7, "Cherry")};
        Records moved = dated;
        moved[0] = row("a", 1, 8, "Apple");
        Records renamed = dated;
        renamed[0] = row("a", 1, 5, "Zebra");
        Records completed = dated;
        completed[0] = row("a", 1, 5, "Apple").withState(2);
        QTest::newRow("due date moved") << SortedListInfo() << dated << moved << true << ids("b c a");
        QTest::newRow("renamed") << alphabetical << dated << renamed << true << ids("b c a");
        QTest::newRow("completed hidden after the setting changed")
            << SortedListInfo() << completed << Records(completed) << false << ids("b c");
    }

    // GIVEN a sorted list WHEN a refresh brings new maps for its rows THEN the order and the filter
    // follow the new values, not the ones the rows had when they were first sorted.
    void rowsFollowChangesOfTheirRecords()
    {
        QFETCH(SortedListInfo, info);
        QFETCH(Records, initial);
        QFETCH(Records, changed);
        QFETCH(bool, showCompleted);
        Records records = initial;
        ListModel source([&records] { return records; });
        SortModel sortModel;
        QAbstractItemModelTester tester(&sortModel);
        sortModel.setSortedListInfo(info);
        sortModel.setExcludeCompletedObjectsType(SortModel::ExcludeCompletedTasks);
        sortModel.setSourceModel(&source);
        QCOMPARE(sortModel.rowCount(), 3);

        records.clear();
        for (const QVariantMap& record : changed)
            records.append(QVariantMap(record.toStdMap()));
        Settings::instance()->setShowCompletedTasks(showCompleted);
        sortModel.update();

        QTEST(idsOf(sortModel), "expected");
    }

    void activeObjectCountCountsRowsTheFilterHides()
    {
        Records records{task("open", 1), task("hidden-open", 2), task("done", 3).withState(2),
                        task("gone", 4).withState(1)};
        ListModel source([&records] { return records; });
        HidingSortModel sortModel;
        QAbstractItemModelTester tester(&sortModel);
        sortModel.hiddenIds = ids("hidden-open");
        QSignalSpy countChanged(&sortModel, &SortModel::activeObjectCountChanged);

        sortModel.setSourceModel(&source);

        QCOMPARE(sortModel.rowCount(), 3);
        QCOMPARE(sortModel.property("activeObjectCount").toInt(), 2);
        QCOMPARE(QList<QVariantList>(countChanged), QList<QVariantList>{{2}});
    }

    void draggedOrderIsReadBackByTheNextModel()
    {
        QVERIFY(TestDatabase::unpackApplicationDatabase());
        const auto sortedList = [](QObject* page) {
            auto* sortModel = new SortModel(page);
            new QAbstractItemModelTester(sortModel, page);
            sortModel->setModelType(SortingNamespace::ListTypeProject, "garden");
            sortModel->setSourceModel(new ListModel(
                [] {
                    return Records{task("a", 1), task("b", 2)};
                },
                page));
            return sortModel;
        };
        QObject draggingPage, nextPage;
        sortedList(&draggingPage)->moveItem(0, 1);

        QCOMPARE(idsOf(*sortedList(&nextPage)), ids("b a"));
    }
};

NORVEL_TEST_MAIN(SortModelTest)

#include "sortmodeltest.moc"

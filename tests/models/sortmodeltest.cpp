#include "models/sortmodel.h"
#include "core/settings.h"
#include "models/contexttasksortmodel.h"
#include "models/listmodel.h"
#include "models/manualorder.h"
#include "models/nocontexttaskslistmodel.h"
#include "models/nocontexttaskssortmodel.h"
#include "models/projectfoldersortmodel.h"
#include "models/rootcontextslistmodel.h"
#include "store/predefineddatahelper.h"
#include "testlib/recordbuilder.h"
#include "testlib/rowsignals.h"
#include "testlib/testenvironment.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QSignalSpy>
#include <QtTest>

Q_DECLARE_METATYPE(SortingNamespace::SortingType)
Q_DECLARE_METATYPE(SortingNamespace::OrderHash)
Q_DECLARE_METATYPE(SortModel::ExcludeType)

namespace {

using Records = QList<QVariantMap>;

QDateTime day(int dayOfMonth)
{
    return wallClock(QDate(2024, 3, dayOfMonth), QTime(12, 0));
}

RecordBuilder task(const char* id, uint timestamp)
{
    return RecordBuilder::task(QStringLiteral("Task"))
        .withId(QString::fromLatin1(id))
        .withTimestamp(timestamp);
}

RecordBuilder project(const char* id, uint timestamp)
{
    return RecordBuilder::project(QStringLiteral("Project"))
        .withId(QString::fromLatin1(id))
        .withTimestamp(timestamp);
}

RecordBuilder folder(const char* id, uint timestamp)
{
    return RecordBuilder::folder(QStringLiteral("Folder"))
        .withId(QString::fromLatin1(id))
        .withTimestamp(timestamp);
}

RecordBuilder context(const char* id, uint timestamp)
{
    return RecordBuilder::context(QStringLiteral("Context"))
        .withId(QString::fromLatin1(id))
        .withTimestamp(timestamp);
}

QStringList idsOf(const QAbstractItemModel& model)
{
    QStringList ids;
    for (int row = 0; row < model.rowCount(); ++row)
        ids << model.index(row, 0)
                   .data(ListModel::listItemRole)
                   .toMap()
                   .value(QStringLiteral("ID"))
                   .toString();
    return ids;
}

QStringList ids(const char* spaced)
{
    return QString::fromLatin1(spaced).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// A list and its sort model, as the services hand them out.
struct ModelPair
{
    ModelPair(const QString& kind, const Records& initial)
        : records(initial)
    {
        const auto function = [this] { return records; };
        if (kind == QLatin1String("no context")) {
            source = std::make_unique<NoContextTasksListModel>(function);
            sortModel = std::make_unique<NoContextTasksSortModel>();
        } else {
            source = std::make_unique<ListModel>(function);
            if (kind == QLatin1String("project folder"))
                sortModel = std::make_unique<ProjectFolderSortModel>();
            else if (kind == QLatin1String("context task"))
                sortModel = std::make_unique<ContextTaskSortModel>();
            else if (kind == QLatin1String("root contexts"))
                sortModel = std::make_unique<RootContextsListModel>();
            else
                sortModel = std::make_unique<SortModel>();
        }
        tester = std::make_unique<QAbstractItemModelTester>(sortModel.get());
    }

    void show(const SortedListInfo& info = SortedListInfo())
    {
        sortModel->setSortedListInfo(info);
        sortModel->setSourceModel(source.get());
    }

    Records records;
    std::unique_ptr<ListModel> source;
    std::unique_ptr<SortModel> sortModel;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

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
    void init();
    void cleanup();
    void rowsFollowTheSortingRules_data();
    void rowsFollowTheSortingRules();
    void completedFilterFollowsTheChosenSetting_data();
    void completedFilterFollowsTheChosenSetting();
    void settingChangeTakesEffectAtTheNextUpdate();
    void predefinedIdsAreReadWhenSorting();
    void sourceUpdateResortsWithoutReset();
    void updatePassesToSourceAndReportsUpdated();
    void nullSourceModelIsIgnored();
    void moveItemComputesShiftedPositions_data();
    void moveItemComputesShiftedPositions();
    void manualOrderFromRowsKeepsTheListAsItLooks();
    void activeObjectCountCountsRowsTheFilterHides();
    void activeObjectCountSignalsOnlyChanges();
    void objectListsReadTheVisibleRows();
    void requestDeletionDeletesBothModels();
};

void SortModelTest::init()
{
    Settings::instance()->setShowCompletedTasks(true);
    Settings::instance()->setShowCompletedProjects(true);
}

void SortModelTest::cleanup()
{
    PredefinedDataHelper::instance()->unsetNorvelBoxId();
    PredefinedDataHelper::instance()->unsetOneStepActionsId();
}

void SortModelTest::rowsFollowTheSortingRules_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<Records>("records");
    QTest::addColumn<SortingNamespace::SortingType>("sortingType");
    QTest::addColumn<SortingNamespace::OrderHash>("order");
    QTest::addColumn<bool>("groupByDate");
    QTest::addColumn<QStringList>("expected");

    const auto asc = SortingNamespace::TimestampAscType;
    const auto manual = SortingNamespace::ManualType;
    const auto alphabetical = SortingNamespace::AlphabeticalType;
    const SortingNamespace::OrderHash none;
    const QString base = QStringLiteral("base");

    QTest::newRow("state order: active, deleted, completed, completed and deleted")
        << base
        << Records{task("done-deleted", 1).withState(3), task("done", 2).withState(2),
                   task("gone", 3).withState(1), task("open", 4).withState(0)}
        << asc << none << true << ids("open gone done done-deleted");
    QTest::newRow("deleted rows by time, then level, then name, whatever the sorting")
        << base
        << Records{task("old", 10).withState(1).named(QStringLiteral("A")),
                   task("child", 20).withState(1).withLevel(1).named(QStringLiteral("A")),
                   task("parent", 20).withState(1).withLevel(0).named(QStringLiteral("Z")),
                   task("beta", 30).withState(1).named(QStringLiteral("Beta")),
                   task("alpha", 30).withState(1).named(QStringLiteral("alpha"))}
        << alphabetical << none << false << ids("alpha beta parent child old");
    QTest::newRow("ascending time stamps")
        << base << Records{task("c", 3), task("a", 1), task("b", 2)} << asc << none << true << ids("a b c");
    QTest::newRow("descending time stamps")
        << base << Records{task("c", 3), task("a", 1), task("b", 2)} << SortingNamespace::TimestampDescType
        << none << true << ids("c b a");
    QTest::newRow("grouped by due date before the sorting type")
        << base << Records{task("undated", 1), task("late", 2).dueAt(day(9)), task("soon", 3).dueAt(day(2))}
        << asc << none << true << ids("soon late undated");
    QTest::newRow("numeric collation: Task 2 before Task 10")
        << base
        << Records{task("ten", 1).named(QStringLiteral("Task 10")),
                   task("two", 2).named(QStringLiteral("Task 2"))}
        << alphabetical << none << false << ids("two ten");
    QTest::newRow("ties broken by ID")
        << base << Records{task("b", 5), task("c", 5), task("a", 5)} << asc << none << true << ids("a b c");
    QTest::newRow("manual positions; rows without one by the date group")
        << base << Records{task("a", 10), task("b", 40), task("c", 30), task("d", 50).dueAt(day(3))} << manual
        << SortingNamespace::OrderHash{{QStringLiteral("c"), 0}, {QStringLiteral("a"), 1}} << false
        << ids("d c a b");
    QTest::newRow("manual positions do not outrank state")
        << base << Records{task("a", 1).withState(2), task("b", 2)} << manual
        << SortingNamespace::OrderHash{{QStringLiteral("a"), 0}, {QStringLiteral("b"), 1}} << false
        << ids("b a");
    QTest::newRow("folders before projects")
        << QStringLiteral("project folder") << Records{project("p", 1), folder("f", 2), project("q", 3)}
        << asc << none << true << ids("f p q");
    QTest::newRow("single-actions project last")
        << QStringLiteral("project folder")
        << Records{project(RecordBuilder::oneStepActionsId, 0).named(QStringLiteral("One Step Actions")),
                   folder("f", 5), project("p", 9)}
        << asc << none << true
        << ids("f p") + QStringList{QString::fromLatin1(RecordBuilder::oneStepActionsId)};
    QTest::newRow("manual position beats the folder rule")
        << QStringLiteral("project folder") << Records{project("p", 1), folder("f", 2), folder("g", 3)}
        << manual << SortingNamespace::OrderHash{{QStringLiteral("p"), 0}, {QStringLiteral("f"), 1}} << false
        << ids("p f g");
    QTest::newRow("No context last") << QStringLiteral("root contexts")
                                     << Records{context("", 0).named(QStringLiteral("No context")),
                                                context("b", 2), context("a", 1)}
                                     << asc << none << true << QStringList{"a", "b", ""};
    QTest::newRow("contexts, then projects, then tasks")
        << QStringLiteral("context task")
        << Records{task("t", 1), project("p", 2), folder("f", 3), context("c", 4), task("u", 0)} << asc
        << none << true << ids("c p f u t");
    QTest::newRow("no-context tasks: inbox, single actions, then by time stamp")
        << QStringLiteral("no context")
        << Records{task("late-project", 5).inParent(QStringLiteral("p1")),
                   task("early-project", 3).inParent(QStringLiteral("p2")),
                   task("single", 8).inParent(QString::fromLatin1(RecordBuilder::oneStepActionsId)),
                   task("inbox-due", 9).dueAt(day(4)), task("inbox-undated", 1)}
        << asc << none << true << ids("inbox-due inbox-undated single early-project late-project");
}

void SortModelTest::rowsFollowTheSortingRules()
{
    QFETCH(QString, kind);
    QFETCH(Records, records);
    QFETCH(SortingNamespace::SortingType, sortingType);
    QFETCH(SortingNamespace::OrderHash, order);
    QFETCH(bool, groupByDate);
    QFETCH(QStringList, expected);
    ModelPair pair(kind, records);

    pair.show(SortedListInfo(sortingType, order, QDateTime(), groupByDate));

    QCOMPARE(idsOf(*pair.sortModel), expected);
}

void SortModelTest::completedFilterFollowsTheChosenSetting_data()
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

void SortModelTest::completedFilterFollowsTheChosenSetting()
{
    QFETCH(SortModel::ExcludeType, excludeType);
    QFETCH(bool, showCompletedProjects);
    QFETCH(bool, showCompletedTasks);
    QFETCH(QStringList, expected);
    Settings::instance()->setShowCompletedProjects(showCompletedProjects);
    Settings::instance()->setShowCompletedTasks(showCompletedTasks);
    ModelPair pair(QStringLiteral("base"),
                   Records{task("done-task", 1).withState(2), task("open", 2),
                           project("done-project", 3).withState(2), task("done-deleted", 4).withState(3)});
    pair.sortModel->setExcludeCompletedObjectsType(excludeType);

    pair.show();

    QCOMPARE(idsOf(*pair.sortModel), expected);
    QCOMPARE(pair.sortModel->activeObjectCount(), 1);
}

void SortModelTest::settingChangeTakesEffectAtTheNextUpdate()
{
    ModelPair pair(QStringLiteral("base"), Records{task("open", 1), task("done", 2).withState(2)});
    pair.sortModel->setExcludeCompletedObjectsType(SortModel::ExcludeCompletedTasks);
    pair.show();
    QCOMPARE(pair.sortModel->rowCount(), 2);

    Settings::instance()->setShowCompletedTasks(false);
    pair.sortModel->update();

    QCOMPARE(idsOf(*pair.sortModel), ids("open"));
}

void SortModelTest::predefinedIdsAreReadWhenSorting()
{
    ModelPair projects(QStringLiteral("project folder"),
                       Records{project("server-single-actions", 0), project("p", 5),
                               project(RecordBuilder::oneStepActionsId, 1)});
    ModelPair tasks(QStringLiteral("no context"),
                    Records{task("in-project", 1).inParent(QStringLiteral("p")),
                            task("in-old-inbox", 2).inParent(QString::fromLatin1(RecordBuilder::inboxId)),
                            task("in-server-inbox", 3).inParent(QStringLiteral("server-inbox"))});

    PredefinedDataHelper::instance()->setOneStepActionsId(QStringLiteral("server-single-actions"));
    PredefinedDataHelper::instance()->setNorvelBoxId(QStringLiteral("server-inbox"));
    projects.show();
    tasks.show();

    QCOMPARE(idsOf(*projects.sortModel), QStringList{QString::fromLatin1(RecordBuilder::oneStepActionsId)} +
                                             ids("p server-single-actions"));
    QCOMPARE(idsOf(*tasks.sortModel), ids("in-server-inbox in-project in-old-inbox"));
}

void SortModelTest::sourceUpdateResortsWithoutReset()
{
    ModelPair pair(QStringLiteral("base"), Records{task("a", 1), task("b", 2), task("c", 3)});
    pair.show();
    RowSignals proxySignals(pair.sortModel.get());

    pair.records[0].insert(QStringLiteral("TIMESTAMP"), 9);
    pair.source->update();

    QCOMPARE(idsOf(*pair.sortModel), ids("b c a"));
    QCOMPARE(proxySignals.reset.count(), 0);
    QCOMPARE(proxySignals.removed.count(), 0);
    QCOMPARE(proxySignals.inserted.count(), 0);
}

void SortModelTest::updatePassesToSourceAndReportsUpdated()
{
    ModelPair pair(QStringLiteral("base"), Records{task("a", 1)});
    pair.show();
    QSignalSpy updated(pair.sortModel.get(), &SortModel::updated);
    QSignalSpy sourceUpdated(pair.source.get(), &ListModel::updated);

    pair.records.append(task("b", 0));
    pair.sortModel->update();

    QCOMPARE(sourceUpdated.count(), 1);
    QCOMPARE(updated.count(), 1);
    QCOMPARE(idsOf(*pair.sortModel), ids("b a"));
}

void SortModelTest::nullSourceModelIsIgnored()
{
    ModelPair pair(QStringLiteral("base"), Records{task("a", 1)});
    pair.show();

    pair.sortModel->setSourceModel(nullptr);

    QCOMPARE(pair.sortModel->sourceModel(), pair.source.get());
    QCOMPARE(pair.sortModel->rowCount(), 1);
}

void SortModelTest::moveItemComputesShiftedPositions_data()
{
    QTest::addColumn<int>("oldIndex");
    QTest::addColumn<int>("newIndex");
    QTest::addColumn<QList<int>>("positions");

    QTest::newRow("down: rows in between move up") << 1 << 3 << QList<int>{0, 3, 1, 2, 4};
    QTest::newRow("up: rows in between move down") << 3 << 1 << QList<int>{0, 2, 3, 1, 4};
    QTest::newRow("first to last") << 0 << 4 << QList<int>{4, 0, 1, 2, 3};
    QTest::newRow("last to first") << 4 << 0 << QList<int>{1, 2, 3, 4, 0};
    QTest::newRow("to the neighbour below") << 2 << 3 << QList<int>{0, 1, 3, 2, 4};
}

void SortModelTest::moveItemComputesShiftedPositions()
{
    QFETCH(int, oldIndex);
    QFETCH(int, newIndex);
    QFETCH(QList<int>, positions);
    const QStringList visibleIds = ids("a b c d e");

    const SortingNamespace::OrderHash order = ManualOrder::afterMove(visibleIds, oldIndex, newIndex);

    QCOMPARE(order.size(), visibleIds.size());
    for (int row = 0; row < visibleIds.size(); ++row)
        QCOMPARE(order.value(visibleIds.at(row), -1), positions.at(row));
}

void SortModelTest::manualOrderFromRowsKeepsTheListAsItLooks()
{
    ModelPair pair(QStringLiteral("base"), Records{task("c", 3), task("a", 1), task("b", 2)});
    pair.show();

    const SortingNamespace::OrderHash order = ManualOrder::fromRows(idsOf(*pair.sortModel));
    ModelPair manual(QStringLiteral("base"), Records{task("c", 3), task("a", 1), task("b", 2)});
    manual.show(SortedListInfo(SortingNamespace::ManualType, order, QDateTime(), false));

    QCOMPARE(order, (SortingNamespace::OrderHash{{"a", 0}, {"b", 1}, {"c", 2}}));
    QCOMPARE(idsOf(*manual.sortModel), ids("a b c"));
}

void SortModelTest::activeObjectCountCountsRowsTheFilterHides()
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
    QCOMPARE(sortModel.activeObjectCount(), 2);
    QCOMPARE(sortModel.property("activeObjectCount").toInt(), 2);
    QCOMPARE(countChanged.count(), 1);
    QCOMPARE(countChanged.at(0).at(0).toInt(), 2);
}

void SortModelTest::activeObjectCountSignalsOnlyChanges()
{
    ModelPair pair(QStringLiteral("base"), Records{task("a", 1), task("b", 2)});
    pair.show();
    QSignalSpy countChanged(pair.sortModel.get(), &SortModel::activeObjectCountChanged);

    pair.sortModel->update();
    QCOMPARE(countChanged.count(), 0);

    pair.records[0].insert(QStringLiteral("STATE"), 2);
    pair.sortModel->update();

    QCOMPARE(countChanged.count(), 1);
    QCOMPARE(countChanged.at(0).at(0).toInt(), 1);
    QCOMPARE(pair.sortModel->activeObjectCount(), 1);
}

void SortModelTest::objectListsReadTheVisibleRows()
{
    ModelPair pair(QStringLiteral("context task"), Records{task("t", 2), project("p", 1), context("c", 3)});
    pair.show();

    const QVariantList tasks = pair.sortModel->getTaskList();
    QCOMPARE(tasks.size(), 1);
    QCOMPARE(tasks.at(0).toMap().value(QStringLiteral("ID")).toString(), QStringLiteral("t"));
    QCOMPARE(pair.sortModel->getObjectList().size(), 3);
    QCOMPARE(pair.sortModel->getObjectList().at(0).toMap().value(QStringLiteral("ID")).toString(),
             QStringLiteral("c"));
    QCOMPARE(pair.sortModel->getIndexByObjectId(QStringLiteral("p")), 1);
    QCOMPARE(pair.sortModel->getIndexByObjectId(QStringLiteral("missing")), -1);
    QCOMPARE(pair.sortModel->getObjectByIndex(2).value(QStringLiteral("ID")).toString(), QStringLiteral("t"));
    QVERIFY(pair.sortModel->getObjectByIndex(3).isEmpty());
}

void SortModelTest::requestDeletionDeletesBothModels()
{
    auto* source = new ListModel([] { return Records{task("a", 1)}; });
    auto* sortModel = new SortModel;
    sortModel->setSourceModel(source);
    QSignalSpy sourceDestroyed(source, &QObject::destroyed);
    QSignalSpy sortModelDestroyed(sortModel, &QObject::destroyed);

    sortModel->requestDeletion();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    QCOMPARE(sourceDestroyed.count(), 1);
    QCOMPARE(sortModelDestroyed.count(), 1);
}

NORVEL_TEST_MAIN(SortModelTest)

#include "sortmodeltest.moc"

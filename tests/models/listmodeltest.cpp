#include "models/listmodel.h"
#include "models/nocontexttaskslistmodel.h"
#include "store/datamanager.h"
#include "testlib/recordbuilder.h"
#include "testlib/rowsignals.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QSignalSpy>
#include <QtTest>

using Records = QList<QVariantMap>;

namespace {
QVariantMap record(const QString& id, int state = 0, const QString& name = QStringLiteral("Task"))
{
    return RecordBuilder::task(name).withId(id).withState(state);
}

QList<int> firstRows(const QSignalSpy& spy)
{
    QList<int> rows;
    for (const QList<QVariant>& arguments : spy)
        rows.append(arguments.at(1).toInt());
    return rows;
}
} // namespace

class ListModelTest : public QObject
{
    Q_OBJECT

private slots:
    void updateMovesOnlyVanishedNewAndRestatedRecords_data()
    {
        QTest::addColumn<Records>("before");
        QTest::addColumn<Records>("after");
        QTest::addColumn<QList<int>>("removedRows");
        QTest::addColumn<QList<int>>("insertedRows");

        const Records abc{record("a"), record("b"), record("c")};
        QTest::newRow("nothing changed") << abc << abc << QList<int>() << QList<int>();
        QTest::newRow("changed STATE: removed, then appended")
            << abc << Records{record("a", 2), record("b"), record("c")} << QList<int>{0} << QList<int>{2};
        QTest::newRow("changed NAME keeps its row")
            << abc << Records{record("a", 0, "Renamed"), record("b"), record("c")} << QList<int>()
            << QList<int>();
        QTest::newRow("vanished ones removed from last to first")
            << (abc + Records{record("d")}) << Records{record("a"), record("c")} << QList<int>{3, 1}
            << QList<int>();
        QTest::newRow("new ones appended in their order")
            << Records{record("b")} << abc << QList<int>() << QList<int>{1, 2};
        QTest::newRow("empty ID renamed keeps its row")
            << Records{record(""), record("p")} << Records{record("", 0, "Renamed"), record("p")}
            << QList<int>() << QList<int>();
        QTest::newRow("empty ID vanishes")
            << Records{record(""), record("p")} << Records{record("p")} << QList<int>{0} << QList<int>();
        QTest::newRow("same maps in another order move nothing")
            << abc << Records{abc.at(2), abc.at(0), abc.at(1)} << QList<int>() << QList<int>();
        QTest::newRow("same maps around a completed one")
            << abc << Records{abc.at(0), record("b", 2), abc.at(2)} << QList<int>{1} << QList<int>{2};
        QTest::newRow("repeated ID in the answer keeps one row")
            << abc << (abc + Records{record("a", 0, "Again")}) << QList<int>() << QList<int>();
        QTest::newRow("repeated ID in a first answer keeps one row")
            << Records() << (abc + Records{record("b", 0, "Again"), record("d")}) << QList<int>()
            << QList<int>{0, 1, 2, 3};
    }

    void updateMovesOnlyVanishedNewAndRestatedRecords()
    {
        QFETCH(Records, before);
        QFETCH(Records, after);
        Records records = before;
        ListModel model([&records] { return records; });
        QAbstractItemModelTester tester(&model);
        RowSignals rowSignals(&model);
        QSignalSpy updated(&model, &ListModel::updated);

        records = after;
        model.update();

        QTEST(firstRows(rowSignals.removed), "removedRows");
        QTEST(firstRows(rowSignals.inserted), "insertedRows");
        QCOMPARE(rowSignals.moved.count() + rowSignals.reset.count() + rowSignals.layoutChanged.count(), 0);
        // One dataChanged over all rows, with no roles named, covers the records refreshed in place.
        QCOMPARE(rowSignals.dataChanged.count(), 1);
        QCOMPARE(rowSignals.dataChanged.at(0).at(0).toModelIndex(), model.index(0));
        QCOMPARE(rowSignals.dataChanged.at(0).at(1).toModelIndex(), model.index(model.rowCount() - 1));
        QCOMPARE(rowSignals.dataChanged.at(0).at(2).value<QVector<int>>(), QVector<int>());
        QCOMPARE(updated.count(), 1);
        QSet<QString> distinctIds;
        for (const QVariantMap& fresh : after)
            distinctIds.insert(fresh.value("ID").toString());
        QCOMPARE(model.rowCount(), distinctIds.size());
        for (int row = 0; row < model.rowCount(); ++row) {
            const QVariantMap shown = model.data(model.index(row), ListModel::listItemRole).toMap();
            QVERIFY(after.contains(shown));
            QCOMPARE(model.data(model.index(row), ListModel::stateRole), shown.value("STATE"));
        }
    }

    void clearEmitsOneRemovalAndNothingWhenEmpty()
    {
        Records records;
        ListModel model([&records] { return records; });
        QAbstractItemModelTester tester(&model);
        RowSignals rowSignals(&model);
        QSignalSpy aboutToRemove(&model, &QAbstractItemModel::rowsAboutToBeRemoved);

        model.clear();
        QCOMPARE(aboutToRemove.count() + rowSignals.structuralCount() + rowSignals.dataChanged.count(), 0);

        records = {record("a"), record("b"), record("c")};
        model.update();
        model.clear();
        QCOMPARE(rowSignals.removed.count(), 1);
        QCOMPARE(rowSignals.removed.at(0).at(1).toInt(), 0);
        QCOMPARE(rowSignals.removed.at(0).at(2).toInt(), 2);
        QCOMPARE(model.rowCount(), 0);
    }

    void objectTypeRoleNamesEachKind_data()
    {
        QTest::addColumn<QVariantMap>("record");
        QTest::addColumn<QString>("objectType");
        QTest::newRow("task") << RecordBuilder::task().build() << "task";
        QTest::newRow("project as read, FOLDER 0")
            << RecordBuilder::project().with("FOLDER", 0).build() << "project";
        QTest::newRow("folder as read, FOLDER 1")
            << RecordBuilder::project().with("FOLDER", 1).build() << "folder";
        QTest::newRow("context") << RecordBuilder::context().build() << "context";
        QTest::newRow("completed task") << RecordBuilder::task().withState(2).build() << "completed";
        QTest::newRow("completed folder") << RecordBuilder::folder().withState(2).build() << "completed";
        QTest::newRow("deleted task") << RecordBuilder::task().withState(1).build() << "task";
        QTest::newRow("completed and deleted project")
            << RecordBuilder::project().withState(3).build() << "project";
    }

    void objectTypeRoleNamesEachKind()
    {
        QFETCH(QVariantMap, record);
        ListModel model([record] { return Records{record}; });

        QTEST(model.data(model.index(0), ListModel::objectTypeRole).toString(), "objectType");
    }

    void noContextListNamesParentProjectFromStoreUntilNextUpdate()
    {
        QVERIFY(TestDatabase::unpackApplicationDatabase());
        DataManager* data = DataManager::instance();
        DOProject project = RecordBuilder::project("Garden").withId("garden");
        QVERIFY(data->createProjectLocally(project) && data->commitChanges());
        NoContextTasksListModel model([] {
            return Records{RecordBuilder::task().withId("t").inParent("garden"),
                           RecordBuilder::task().withId("u").inParent("gone")};
        });
        QCOMPARE(model.data(model.index(0), NoContextTasksListModel::parentProjectRole).toString(), "garden");
        QCOMPARE(model.data(model.index(0), NoContextTasksListModel::parentProjectNameRole).toString(),
                 "Garden");
        QVERIFY(!model.data(model.index(1), NoContextTasksListModel::parentProjectNameRole).isValid());

        project.insert("NAME", "Orchard");
        QVERIFY(data->updateProjectLocally(project) && data->commitChanges());
        QCOMPARE(model.data(model.index(0), NoContextTasksListModel::parentProjectNameRole).toString(),
                 "Garden");
        model.update();
        QCOMPARE(model.data(model.index(0), NoContextTasksListModel::parentProjectNameRole).toString(),
                 "Orchard");
    }
};

NORVEL_TEST_MAIN(ListModelTest)

#include "listmodeltest.moc"

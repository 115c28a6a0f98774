#include "models/listmodel.h"
#include "models/nocontexttaskslistmodel.h"
#include "store/datamanager.h"
#include "testlib/recordbuilder.h"
#include "testlib/rowsignals.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"
#include "utilities/helper.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QSignalSpy>
#include <QtTest>

// A data function whose answer the test changes between updates.
class Records
{
public:
    QList<QVariantMap> list;

    ListModel::DataFunction function()
    {
        return [this] { return list; };
    }

    void set(const QString& id, const QString& key, const QVariant& value)
    {
        for (QVariantMap& record : list) {
            if (record.value(QStringLiteral("ID")).toString() == id)
                record.insert(key, value);
        }
    }
};

class ListModelTest : public QObject
{
    Q_OBJECT

private slots:
    void newModelIsFilledAtOnce();
    void updateWithNothingChangedEmitsOnlyDataChangedAndUpdated();
    void updateOnEmptyListEmitsDataChangedWithInvalidIndexes();
    void changedStateRemovesRowAndAppendsIt();
    void changedNameKeepsRow();
    void vanishedRecordsAreRemovedFromLastToFirst();
    void newRecordsAreAppendedInTheirOrder();
    void clearOnEmptyModelEmitsNothing();
    void clearRemovesAllRowsInOneStep();
    void objectTypeRoleNamesEachKind_data();
    void objectTypeRoleNamesEachKind();
    void dataIsInvalidForUnknownRoleOrRow();
    void emptyIdIsAnOrdinaryKey();
    void noContextListNamesParentProjectRole();
    void noContextListReturnsParentId();
    void noContextListNamesParentProjectFromStoreUntilNextUpdate();
};

void ListModelTest::newModelIsFilledAtOnce()
{
    Records records;
    records.list = {RecordBuilder::task(QStringLiteral("A")).withId(QStringLiteral("a")),
                    RecordBuilder::task(QStringLiteral("B")).withId(QStringLiteral("b"))};

    ListModel model(records.function());

    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.data(model.index(1), ListModel::listItemRole).toMap(), records.list.at(1));
}

void ListModelTest::updateWithNothingChangedEmitsOnlyDataChangedAndUpdated()
{
    Records records;
    records.list = {RecordBuilder::task(QStringLiteral("A")).withId(QStringLiteral("a")),
                    RecordBuilder::task(QStringLiteral("B")).withId(QStringLiteral("b")),
                    RecordBuilder::task(QStringLiteral("C")).withId(QStringLiteral("c"))};
    ListModel model(records.function());
    QAbstractItemModelTester tester(&model);
    RowSignals rowSignals(&model);
    QSignalSpy updated(&model, &ListModel::updated);

    model.update();

    QCOMPARE(rowSignals.structuralCount(), 0);
    QCOMPARE(rowSignals.dataChanged.count(), 1);
    QCOMPARE(rowSignals.dataChanged.at(0).at(0).toModelIndex(), model.index(0));
    QCOMPARE(rowSignals.dataChanged.at(0).at(1).toModelIndex(), model.index(2));
    QCOMPARE(rowSignals.dataChanged.at(0).at(2).value<QVector<int>>(), QVector<int>());
    QCOMPARE(updated.count(), 1);
}

void ListModelTest::updateOnEmptyListEmitsDataChangedWithInvalidIndexes()
{
    // No model tester here: it rejects the invalid indexes, which the sort model above ignores.
    Records records;
    ListModel model(records.function());
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy updated(&model, &ListModel::updated);

    model.update();

    QCOMPARE(changed.count(), 1);
    QVERIFY(!changed.at(0).at(0).toModelIndex().isValid());
    QVERIFY(!changed.at(0).at(1).toModelIndex().isValid());
    QCOMPARE(updated.count(), 1);
}

void ListModelTest::changedStateRemovesRowAndAppendsIt()
{
    Records records;
    records.list = {RecordBuilder::task(QStringLiteral("A")).withId(QStringLiteral("a")).withState(0),
                    RecordBuilder::task(QStringLiteral("B")).withId(QStringLiteral("b")).withState(0),
                    RecordBuilder::task(QStringLiteral("C")).withId(QStringLiteral("c")).withState(0)};
    ListModel model(records.function());
    QAbstractItemModelTester tester(&model);
    RowSignals rowSignals(&model);

    records.set(QStringLiteral("a"), QStringLiteral("STATE"), 2);
    model.update();

    QCOMPARE(rowSignals.removed.count(), 1);
    QCOMPARE(rowSignals.removed.at(0).at(1).toInt(), 0);
    QCOMPARE(rowSignals.removed.at(0).at(2).toInt(), 0);
    QCOMPARE(rowSignals.inserted.count(), 1);
    QCOMPARE(rowSignals.inserted.at(0).at(1).toInt(), 2);
    QCOMPARE(rowSignals.inserted.at(0).at(2).toInt(), 2);
    QCOMPARE(model.data(model.index(2), ListModel::listItemRole).toMap().value(QStringLiteral("ID")),
             QVariant(QStringLiteral("a")));
    QCOMPARE(model.data(model.index(2), ListModel::stateRole).toInt(), 2);
}

void ListModelTest::changedNameKeepsRow()
{
    Records records;
    records.list = {RecordBuilder::task(QStringLiteral("A")).withId(QStringLiteral("a")),
                    RecordBuilder::task(QStringLiteral("B")).withId(QStringLiteral("b"))};
    ListModel model(records.function());
    QAbstractItemModelTester tester(&model);
    RowSignals rowSignals(&model);

    records.set(QStringLiteral("a"), QStringLiteral("NAME"), QStringLiteral("Renamed"));
    model.update();

    QCOMPARE(rowSignals.structuralCount(), 0);
    QCOMPARE(rowSignals.dataChanged.count(), 1);
    QCOMPARE(model.data(model.index(0), ListModel::listItemRole).toMap().value(QStringLiteral("NAME")),
             QVariant(QStringLiteral("Renamed")));
}

void ListModelTest::vanishedRecordsAreRemovedFromLastToFirst()
{
    Records records;
    for (const char* id : {"a", "b", "c", "d"})
        records.list.append(RecordBuilder::task().withId(QString::fromLatin1(id)));
    ListModel model(records.function());
    QAbstractItemModelTester tester(&model);
    RowSignals rowSignals(&model);

    records.list.removeAt(3);
    records.list.removeAt(1);
    model.update();

    QCOMPARE(rowSignals.removed.count(), 2);
    QCOMPARE(rowSignals.removed.at(0).at(1).toInt(), 3);
    QCOMPARE(rowSignals.removed.at(1).at(1).toInt(), 1);
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.data(model.index(1), ListModel::listItemRole).toMap().value(QStringLiteral("ID")),
             QVariant(QStringLiteral("c")));
}

void ListModelTest::newRecordsAreAppendedInTheirOrder()
{
    Records records;
    records.list = {RecordBuilder::task().withId(QStringLiteral("b"))};
    ListModel model(records.function());
    QAbstractItemModelTester tester(&model);
    RowSignals rowSignals(&model);

    records.list.prepend(RecordBuilder::task().withId(QStringLiteral("a")));
    records.list.append(RecordBuilder::task().withId(QStringLiteral("c")));
    model.update();

    QCOMPARE(rowSignals.inserted.count(), 2);
    QCOMPARE(rowSignals.inserted.at(0).at(1).toInt(), 1);
    QCOMPARE(rowSignals.inserted.at(1).at(1).toInt(), 2);
    QStringList ids;
    for (int row = 0; row < model.rowCount(); ++row)
        ids << model.data(model.index(row), ListModel::listItemRole)
                   .toMap()
                   .value(QStringLiteral("ID"))
                   .toString();
    QCOMPARE(ids, (QStringList{QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("c")}));
}

void ListModelTest::clearOnEmptyModelEmitsNothing()
{
    Records records;
    ListModel model(records.function());
    QAbstractItemModelTester tester(&model);
    RowSignals rowSignals(&model);
    QSignalSpy aboutToRemove(&model, &QAbstractItemModel::rowsAboutToBeRemoved);

    model.clear();

    QCOMPARE(aboutToRemove.count(), 0);
    QCOMPARE(rowSignals.structuralCount(), 0);
    QCOMPARE(rowSignals.dataChanged.count(), 0);
}

void ListModelTest::clearRemovesAllRowsInOneStep()
{
    Records records;
    for (const char* id : {"a", "b", "c"})
        records.list.append(RecordBuilder::task().withId(QString::fromLatin1(id)));
    ListModel model(records.function());
    QAbstractItemModelTester tester(&model);
    RowSignals rowSignals(&model);

    model.clear();

    QCOMPARE(rowSignals.removed.count(), 1);
    QCOMPARE(rowSignals.removed.at(0).at(1).toInt(), 0);
    QCOMPARE(rowSignals.removed.at(0).at(2).toInt(), 2);
    QCOMPARE(model.rowCount(), 0);
}

void ListModelTest::objectTypeRoleNamesEachKind_data()
{
    QTest::addColumn<QVariantMap>("record");
    QTest::addColumn<QString>("objectType");
    QTest::newRow("task") << RecordBuilder::task().build() << QStringLiteral("task");
    QTest::newRow("project") << RecordBuilder::project().build() << QStringLiteral("project");
    QTest::newRow("project as read, FOLDER 0")
        << RecordBuilder::project().with(QStringLiteral("FOLDER"), 0).build() << QStringLiteral("project");
    QTest::newRow("folder") << RecordBuilder::folder().build() << QStringLiteral("folder");
    QTest::newRow("folder as read, FOLDER 1")
        << RecordBuilder::project().with(QStringLiteral("FOLDER"), 1).build() << QStringLiteral("folder");
    QTest::newRow("context") << RecordBuilder::context().build() << QStringLiteral("context");
    QTest::newRow("completed task") << RecordBuilder::task().withState(2).build()
                                    << QStringLiteral("completed");
    QTest::newRow("completed project")
        << RecordBuilder::project().withState(2).build() << QStringLiteral("completed");
    QTest::newRow("completed folder")
        << RecordBuilder::folder().withState(2).build() << QStringLiteral("completed");
    QTest::newRow("deleted task") << RecordBuilder::task().withState(1).build() << QStringLiteral("task");
    QTest::newRow("completed and deleted project")
        << RecordBuilder::project().withState(3).build() << QStringLiteral("project");
}

void ListModelTest::objectTypeRoleNamesEachKind()
{
    QFETCH(QVariantMap, record);
    QFETCH(QString, objectType);
    record.insert(QStringLiteral("ID"), QStringLiteral("id"));
    ListModel model([record] { return QList<QVariantMap>{record}; });

    QCOMPARE(model.data(model.index(0), ListModel::objectTypeRole).toString(), objectType);
    QCOMPARE(model.roleNames().value(ListModel::objectTypeRole), QByteArray("objectTypeRole"));
}

void ListModelTest::dataIsInvalidForUnknownRoleOrRow()
{
    ListModel model([] { return QList<QVariantMap>{RecordBuilder::task().withId(QStringLiteral("a"))}; });

    QVERIFY(!model.data(model.index(0), Qt::DisplayRole).isValid());
    QVERIFY(!model.data(model.index(0), ListModel::objectTypeRole + 1).isValid());
    QVERIFY(!model.data(model.index(1), ListModel::listItemRole).isValid());
}

void ListModelTest::emptyIdIsAnOrdinaryKey()
{
    Records records;
    records.list = {RecordBuilder::project(QStringLiteral("No folder")).withId(QString()),
                    RecordBuilder::project(QStringLiteral("P")).withId(QStringLiteral("p"))};
    ListModel model(records.function());
    QAbstractItemModelTester tester(&model);

    records.set(QString(), QStringLiteral("NAME"), QStringLiteral("Renamed"));
    RowSignals rowSignals(&model);
    model.update();

    QCOMPARE(rowSignals.removed.count(), 0);
    QCOMPARE(rowSignals.inserted.count(), 0);
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.data(model.index(0), ListModel::listItemRole).toMap().value(QStringLiteral("NAME")),
             QVariant(QStringLiteral("Renamed")));

    records.list.removeFirst();
    model.update();

    QCOMPARE(rowSignals.removed.count(), 1);
    QCOMPARE(rowSignals.removed.at(0).at(1).toInt(), 0);
}

void ListModelTest::noContextListNamesParentProjectRole()
{
    NoContextTasksListModel model([] { return QList<QVariantMap>(); });

    const QHash<int, QByteArray> names = model.roleNames();
    QCOMPARE(names.value(259), QByteArray("parentProjectRole"));
    QVERIFY(!names.values().contains("objectTypeRole"));
    QCOMPARE(names.value(ListModel::listItemRole), QByteArray("listItemRole"));
}

void ListModelTest::noContextListReturnsParentId()
{
    NoContextTasksListModel model([] {
        return QList<QVariantMap>{
            RecordBuilder::task().withId(QStringLiteral("t")).inParent(QStringLiteral("project-1"))};
    });

    QCOMPARE(model.data(model.index(0), 259).toString(), QStringLiteral("project-1"));
    QCOMPARE(model.data(model.index(0), ListModel::stateRole).toInt(), 0);
}

void ListModelTest::noContextListNamesParentProjectFromStoreUntilNextUpdate()
{
    QVERIFY(TestDatabase::unpackApplicationDatabase());
    DataManager* data = DataManager::instance();
    DOProject project = RecordBuilder::project(QStringLiteral("Garden")).withId(QStringLiteral("garden"));
    QVERIFY(data->createProjectLocally(project));
    QVERIFY(data->commitChanges());
    NoContextTasksListModel model([] {
        return QList<QVariantMap>{
            RecordBuilder::task().withId(QStringLiteral("t")).inParent(QStringLiteral("garden")),
            RecordBuilder::task().withId(QStringLiteral("u")).inParent(QStringLiteral("gone"))};
    });
    QCOMPARE(model.data(model.index(0), 260).toString(), QStringLiteral("Garden"));
    QVERIFY(!model.data(model.index(1), 260).isValid());

    project.insert(QStringLiteral("NAME"), QStringLiteral("Orchard"));
    QVERIFY(data->updateProjectLocally(project));
    QVERIFY(data->commitChanges());
    QCOMPARE(model.data(model.index(0), 260).toString(), QStringLiteral("Garden"));
    model.update();
    QCOMPARE(model.data(model.index(0), 260).toString(), QStringLiteral("Orchard"));
}

NORVEL_TEST_MAIN(ListModelTest)

#include "listmodeltest.moc"

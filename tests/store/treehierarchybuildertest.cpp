#include "store/treehierarchybuilder.h"
#include "testlib/recordbuilder.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

class TreeHierarchyBuilderTest : public QObject
{
    Q_OBJECT

private slots:
    void childrenHangUnderTheirParentsDeepestFirst();
    void rootObjectsCarryTheirWholeSubtree();
    void rowWithMissingParentStaysOutOfEveryChildList();
    void childOfDeletedParentIsKnownButInNoList();
    void repeatedIdKeepsItsFirstRow();

private:
    static DataObject context(const QString& id, const QString& parent, int level);
    static QStringList childIds(const DataObject& object);
    static QStringList rootIds(const TreeHierarchy& tree);
    // Ids of every object that sits in some CHILDREN list below the roots.
    static QStringList idsInLists(const QList<DataObject>& objects);
};

DataObject TreeHierarchyBuilderTest::context(const QString& id, const QString& parent, int level)
{
    return RecordBuilder::context(id).withId(id).inParent(parent).withLevel(level);
}

QStringList TreeHierarchyBuilderTest::childIds(const DataObject& object)
{
    QStringList ids;
    const auto children = object.value(QStringLiteral("CHILDREN")).value<QList<DataObject>>();
    for (const DataObject& child : children)
        ids.append(child.value(QStringLiteral("ID")).toString());
    return ids;
}

QStringList TreeHierarchyBuilderTest::rootIds(const TreeHierarchy& tree)
{
    QStringList ids;
    for (const DataObject& root : tree.rootObjects)
        ids.append(root.value(QStringLiteral("ID")).toString());
    ids.sort();
    return ids;
}

QStringList TreeHierarchyBuilderTest::idsInLists(const QList<DataObject>& objects)
{
    QStringList ids;
    for (const DataObject& object : objects) {
        const auto children = object.value(QStringLiteral("CHILDREN")).value<QList<DataObject>>();
        for (const DataObject& child : children)
            ids.append(child.value(QStringLiteral("ID")).toString());
        ids += idsInLists(children);
    }
    return ids;
}

void TreeHierarchyBuilderTest::childrenHangUnderTheirParentsDeepestFirst()
{
    // Ordered by level, then parent, as the level queries deliver them.
    const QList<DataObject> rows{context("home", "", 0), context("work", "", 0), context("garden", "home", 1),
                                 context("kitchen", "home", 1), context("shed", "garden", 2)};

    const TreeHierarchy tree = TreeHierarchyBuilder::build(rows);

    QCOMPARE(tree.objectById.size(), 5);
    QCOMPARE(childIds(tree.objectById.value("home")), (QStringList{"kitchen", "garden"}));
    QCOMPARE(childIds(tree.objectById.value("garden")), QStringList{"shed"});
    QVERIFY(!tree.objectById.value("work").contains(QStringLiteral("CHILDREN")));
    QCOMPARE(tree.objectById.value("home").value(QStringLiteral("CHILDREN")).userType(),
             qMetaTypeId<QList<DataObject>>());
}

void TreeHierarchyBuilderTest::rootObjectsCarryTheirWholeSubtree()
{
    const QList<DataObject> rows{context("home", "", 0), context("garden", "home", 1),
                                 context("shed", "garden", 2)};

    const TreeHierarchy tree = TreeHierarchyBuilder::build(rows);

    QCOMPARE(rootIds(tree), QStringList{"home"});
    const DataObject garden =
        tree.rootObjects.first().value(QStringLiteral("CHILDREN")).value<QList<DataObject>>().first();
    QCOMPARE(garden.value(QStringLiteral("ID")).toString(), QStringLiteral("garden"));
    QCOMPARE(childIds(garden), QStringList{"shed"});
}

void TreeHierarchyBuilderTest::rowWithMissingParentStaysOutOfEveryChildList()
{
    const QList<DataObject> rows{context("home", "", 0), context("orphan", "gone", 0),
                                 context("garden", "home", 1)};

    const TreeHierarchy tree = TreeHierarchyBuilder::build(rows);

    QCOMPARE(rootIds(tree), (QStringList{"home", "orphan"}));
    QVERIFY(tree.objectById.contains("orphan"));
    QCOMPARE(idsInLists(tree.rootObjects), QStringList{"garden"});
}

void TreeHierarchyBuilderTest::childOfDeletedParentIsKnownButInNoList()
{
    // The deleted parent is not among the active rows, yet its child keeps the level of its chain.
    const QList<DataObject> rows{context("home", "", 0), context("garden", "home", 1),
                                 context("attic", "deleted-room", 2)};

    const TreeHierarchy tree = TreeHierarchyBuilder::build(rows);

    QVERIFY(tree.objectById.contains("attic"));
    QCOMPARE(rootIds(tree), QStringList{"home"});
    QVERIFY(!idsInLists(tree.rootObjects).contains("attic"));
}

void TreeHierarchyBuilderTest::repeatedIdKeepsItsFirstRow()
{
    const QList<DataObject> rows{context("home", "", 0),
                                 RecordBuilder::context("Second").withId("home").withLevel(0),
                                 context("garden", "home", 1)};

    const TreeHierarchy tree = TreeHierarchyBuilder::build(rows);

    QCOMPARE(tree.rootObjects.size(), 1);
    QCOMPARE(tree.rootObjects.first().value(QStringLiteral("NAME")).toString(), QStringLiteral("home"));
    QCOMPARE(childIds(tree.rootObjects.first()), QStringList{"garden"});
}

NORVEL_TEST_MAIN(TreeHierarchyBuilderTest)
#include "treehierarchybuildertest.moc"

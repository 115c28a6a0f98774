#include "store/treehierarchybuilder.h"
#include "testlib/recordbuilder.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

namespace {
DataObject context(const QString& id, const QString& parent, int level)
{
    return RecordBuilder::context(id).withId(id).inParent(parent).withLevel(level);
}

QList<DataObject> childrenOf(const DataObject& object)
{
    return object.value(QStringLiteral("CHILDREN")).value<QList<DataObject>>();
}

// The ids of the objects, each followed by the ids of its children in brackets: "home[garden[shed]]".
QString outline(const QList<DataObject>& objects)
{
    QStringList parts;
    for (const DataObject& object : objects) {
        const QString nested = outline(childrenOf(object));
        parts.append(object.value(QStringLiteral("ID")).toString() +
                     (nested.isEmpty() ? QString() : QLatin1Char('[') + nested + QLatin1Char(']')));
    }
    parts.sort();
    return parts.join(QLatin1Char(' '));
}
} // namespace

class TreeHierarchyBuilderTest : public QObject
{
    Q_OBJECT

private slots:
    void rootsCarryTheirWholeSubtreeDeepestFirst();
    void rowsWithoutParentAmongRowsStayOutOfEveryChildList();
    void repeatedIdKeepsItsFirstRow();
};

void TreeHierarchyBuilderTest::rootsCarryTheirWholeSubtreeDeepestFirst()
{
    // Ordered by level, then parent, as the level queries deliver them.
    const QList<DataObject> rows{context("home", "", 0), context("work", "", 0), context("garden", "home", 1),
                                 context("kitchen", "home", 1), context("shed", "garden", 2)};

    const TreeHierarchy tree = TreeHierarchyBuilder::build(rows);

    QCOMPARE(outline(tree.rootObjects), QStringLiteral("home[garden[shed] kitchen] work"));
    QCOMPARE(tree.objectById.size(), 5);
    QCOMPARE(outline({tree.objectById.value("garden")}), QStringLiteral("garden[shed]"));
    // Children are appended in reverse row order.
    QCOMPARE(childrenOf(tree.objectById.value("home")).first().value(QStringLiteral("ID")).toString(),
             QStringLiteral("kitchen"));
    QVERIFY(!tree.objectById.value("work").contains(QStringLiteral("CHILDREN")));
}

void TreeHierarchyBuilderTest::rowsWithoutParentAmongRowsStayOutOfEveryChildList()
{
    // A parent that is gone, and one that is deleted and so not among the active rows; the child of
    // the deleted one keeps the level of its chain.
    const QList<DataObject> rows{context("home", "", 0), context("orphan", "gone", 0),
                                 context("garden", "home", 1), context("attic", "deleted-room", 2)};

    const TreeHierarchy tree = TreeHierarchyBuilder::build(rows);

    QCOMPARE(outline(tree.rootObjects), QStringLiteral("home[garden] orphan"));
    QVERIFY(tree.objectById.contains("attic"));
    QVERIFY(tree.objectById.contains("orphan"));
}

void TreeHierarchyBuilderTest::repeatedIdKeepsItsFirstRow()
{
    const QList<DataObject> rows{context("home", "", 0),
                                 RecordBuilder::context("Second").withId("home").withLevel(0),
                                 context("garden", "home", 1)};

    const TreeHierarchy tree = TreeHierarchyBuilder::build(rows);

    QCOMPARE(outline(tree.rootObjects), QStringLiteral("home[garden]"));
    QCOMPARE(tree.rootObjects.first().value(QStringLiteral("NAME")).toString(), QStringLiteral("home"));
}

NORVEL_TEST_MAIN(TreeHierarchyBuilderTest)
#include "treehierarchybuildertest.moc"

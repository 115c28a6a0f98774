#include "store/contextstore.h"
#include "core/clock.h"
#include "store/databasehandler.h"
#include "testlib/recordbuilder.h"
#include "testlib/storehelpers.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

namespace {
const QDateTime createdAt = QDateTime(QDate(2024, 3, 1), QTime(12, 0), Qt::UTC);
const QDateTime deletedAt = createdAt.addDays(2);
const uint createdStamp = uint(createdAt.toSecsSinceEpoch());
const uint deletedStamp = uint(deletedAt.toSecsSinceEpoch());
// Holds a quote: values travel bound, so this is an ordinary id.
const QString home = QStringLiteral("home's");

// Rows as the server sent them.
QVariantMap context(const QString& id, const QString& parent, int state = 0, uint timestamp = createdStamp)
{
    return RecordBuilder::context(id)
        .withId(id)
        .inParent(parent)
        .withState(state)
        .withTimestamp(timestamp)
        .fromServer();
}

QVariantMap object(const QString& table, const QString& id, const QString& context, int state = 0)
{
    RecordBuilder object = table == "task" ? RecordBuilder::task(id) : RecordBuilder::project(id);
    return object.withId(id).withContext(context).withState(state).withTimestamp(createdStamp).fromServer();
}
} // namespace

class ContextStoreTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestDatabase> m_database;

    ContextStore* store() const { return m_database->handler()->contexts(); }
    void add(const QList<QVariantMap>& contexts, const QList<QVariantMap>& tasks = {},
             const QList<QVariantMap>& projects = {})
    {
        DatabaseHandler* handler = m_database->handler();
        QVERIFY(insertRecords(handler, "context", contexts) && insertRecords(handler, "task", tasks) &&
                insertRecords(handler, "project", projects));
    }
    QVariant field(const QString& table, const QString& id, const QString& column) const
    {
        return columnOf(*m_database, table, id, column);
    }
    bool setState(const QString& id, int state)
    {
        return store()->updateContextLocally(changed(store()->getContextById(id), {{"STATE", state}}));
    }

private slots:
    void init()
    {
        Clock::pin(deletedAt);
        m_database = std::make_unique<TestDatabase>();
        QVERIFY(m_database->isReady());
    }

    void cleanup()
    {
        m_database.reset();
        Clock::unpin();
    }

    void deletingContextDetachesTasksAndProjectsInEveryState()
    {
        add({context(home, ""), context("garden", home), context("shed", "garden")},
            {object("task", "t-active", home), object("task", "t-deleted", home, 1),
             object("task", "t-completed", home, 2), object("task", "t-both", "garden", 3),
             object("task", "t-shed", "shed")},
            {object("project", "p-active", home), object("project", "p-deleted", "garden", 1),
             object("project", "p-completed", home, 2)});
        QList<DataObject> updated;

        QVERIFY(
            store()->updateContextLocally(changed(store()->getContextById(home), {{"STATE", 1}}), &updated));

        QCOMPARE(statesOf(*m_database, "context", {home, "garden", "shed"}), QList<int>({1, 1, 1}));
        for (const QString& id : {home, QStringLiteral("garden"), QStringLiteral("shed")})
            QCOMPARE(field("context", id, "synced").toInt(), 0);
        const QStringList tasks{"t-active", "t-deleted", "t-completed", "t-both", "t-shed"};
        const QStringList projects{"p-active", "p-deleted", "p-completed"};
        for (const QString table : {"task", "project"}) {
            for (const QString& id : table == "task" ? tasks : projects) {
                QCOMPARE(field(table, id, "context").toString(), QString());
                QCOMPARE(field(table, id, "synced").toInt(), 0);
                QCOMPARE(field(table, id, "timestamp").toUInt(), deletedStamp);
            }
        }
        QCOMPARE(statesOf(*m_database, "task", tasks), QList<int>({0, 1, 2, 3, 0}));
        QCOMPARE(statesOf(*m_database, "project", projects), QList<int>({0, 1, 2}));
        QCOMPARE(idSetOf(updated), QSet<QString>({home, "garden", "shed", "t-active", "t-completed", "t-shed",
                                                  "p-active", "p-completed"}));
        // The context itself comes last, as stored: changed here, so waiting to be sent.
        QCOMPARE(updated.last().value("ID").toString(), home);
        QCOMPARE(updated.last().value("SYNCED").toInt(), 0);
        QCOMPARE(updated.last().value("TIMESTAMP").toUInt(), deletedStamp);
    }

    void restoreBringsChildrenBackOnlyInsideTrashHorizon_data()
    {
        QTest::addColumn<int>("daysAfterDeletion");
        QTest::addColumn<int>("childState");
        QTest::newRow("inside the horizon") << 13 << DEFAULT_OBJECT_STATE;
        QTest::newRow("outside the horizon") << 15 << DELETED_OBJECT_STATE;
    }

    void restoreBringsChildrenBackOnlyInsideTrashHorizon()
    {
        QFETCH(int, daysAfterDeletion);
        add({context(home, ""), context("garden", home), context("orphan", "missing", 1, deletedStamp)},
            {object("task", "t-active", home)});
        QVERIFY(setState(home, DELETED_OBJECT_STATE));

        Clock::pin(deletedAt.addDays(daysAfterDeletion));
        QVERIFY(store()->restoreContext(store()->getContextById(home)));
        QVERIFY(store()->restoreContext(store()->getContextById("orphan")));

        QFETCH(int, childState);
        QCOMPARE(statesOf(*m_database, "context", {home, "garden", "orphan"}),
                 QList<int>({0, childState, 0}));
        QCOMPARE(field("task", "t-active", "context").toString(), QString());
        QCOMPARE(field("context", "orphan", "parent").toString(), QString());
    }

    void remoteActiveContextRevivesDeletedAncestorsAsSynced()
    {
        add({context(home, "", 1), context("garden", home, 1), context("shed", "garden", 1)});

        QVERIFY(store()->updateContextRemotely(
            changed(store()->getContextById("shed"), {{"STATE", 0}, {"SYNC", true}})));

        QCOMPARE(statesOf(*m_database, "context", {home, "garden", "shed"}), QList<int>({0, 0, 0}));
        for (const QString& id : {home, QStringLiteral("garden"), QStringLiteral("shed")}) {
            QCOMPARE(field("context", id, "synced").toInt(), 1);
            QCOMPARE(field("context", id, "timestamp").toUInt(), createdStamp);
        }
    }

    void remoteWalkEndsOnLoopingParents()
    {
        add({context("a", "b", 1), context("b", "a", 1), context("c", "a", 1)});

        QVERIFY(store()->updateContextRemotely(
            changed(store()->getContextById("c"), {{"STATE", 0}, {"SYNC", true}})));

        QCOMPARE(statesOf(*m_database, "context", {"a", "b", "c"}), QList<int>({0, 0, 0}));
    }

    void recursiveCountsFollowSubcontextsInEveryState()
    {
        add({context(home, ""), context("garden", home, 1), context("shed", "garden"),
             context("attic", home, 1), context("untouched", home, 0, createdStamp - 30 * 86400)},
            {object("task", "t-home", home), object("task", "t-shed", "shed"),
             object("task", "t-done", home, 2)},
            {object("project", "p-shed", "shed"), object("project", "p-deleted", home, 1)});

        QCOMPARE(store()->getContextTaskCountRecursive(home), 2);
        QCOMPARE(store()->getContextProjectCountRecursive(home), 1);
        QCOMPARE(store()->getContextProjectCount(home), 0);
        // Active ones whenever changed; or every state, changed inside the trash horizon.
        QCOMPARE(store()->getNestedContextCount(home, false), 2);
        QCOMPARE(store()->getNestedContextCount(home, true), 3);
    }

    void contextWithoutParentRowIsAtLevelZero()
    {
        add({context("root", ""), context("child", "root"), context("orphan", "missing"),
             context("gone", "", 1), context("left", "gone")});

        QCOMPARE(idSetOf(store()->getRootContexts()), QSet<QString>({"root", "orphan"}));
        const TreeHierarchy tree = store()->getContextTree();
        QCOMPARE(idSetOf(tree.objectById.values()), QSet<QString>({"root", "child", "orphan", "left"}));
        QCOMPARE(tree.objectById.value("left").value("LEVEL").toInt(), 1);
        QCOMPARE(idSetOf(tree.rootObjects), QSet<QString>({"root", "orphan"}));
        for (const DataObject& root : tree.rootObjects) {
            const auto children = root.value("CHILDREN").value<QList<DataObject>>();
            QCOMPARE(idSetOf(children),
                     root.value("ID") == "root" ? QSet<QString>({"child"}) : QSet<QString>());
        }
    }
};

NORVEL_TEST_MAIN(ContextStoreTest)
#include "contextstoretest.moc"

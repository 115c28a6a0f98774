#include "store/contextstore.h"
#include "core/clock.h"
#include "store/databasehandler.h"
#include "testlib/recordbuilder.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QSettings>
#include <QStandardPaths>
#include <QtTest>

namespace {
const QDateTime createdAt = QDateTime(QDate(2024, 3, 1), QTime(12, 0), Qt::UTC);
const QDateTime deletedAt = createdAt.addDays(2);
const uint createdStamp = uint(createdAt.toSecsSinceEpoch());
const uint deletedStamp = uint(deletedAt.toSecsSinceEpoch());
// Holds a quote: values travel bound, so this is an ordinary id.
const QString home = QStringLiteral("home's");

DataObject changed(DataObject object, const QVariantMap& changes)
{
    for (auto change = changes.cbegin(); change != changes.cend(); ++change)
        object.insert(change.key(), change.value());
    return object;
}

QSet<QString> idsOf(const QList<DataObject>& objects)
{
    QSet<QString> ids;
    for (const DataObject& object : objects)
        ids.insert(object.value("ID").toString());
    return ids;
}

QString predefinedObjectsPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
           QStringLiteral("/predefined_objects.dat");
}
} // namespace

class ContextStoreTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void deletingContextDetachesTasksAndProjectsInEveryState();
    void restoreBringsChildrenBackOnlyInsideTrashHorizon_data();
    void restoreBringsChildrenBackOnlyInsideTrashHorizon();
    void remoteActiveContextRevivesDeletedAncestorsAsSynced();
    void remoteDeletionCascadesAsLocalWrite();
    void recursiveCountsFollowSubcontextsInEveryState();
    void nestedContextCount_data();
    void nestedContextCount();
    void contextWithoutParentRowIsAtLevelZero();
    void childrenAndSubtreeReads();
    void contextCountLeavesOutPredefinedContexts();
    void predefinedContextTakesServerId_data();
    void predefinedContextTakesServerId();

private:
    ContextStore* store() const { return m_database->handler()->contexts(); }
    void addContext(const QString& id, const QString& parent, int state = 0, uint timestamp = createdStamp);
    void addObject(const QString& table, const QString& id, const QString& context, int state);
    QVariant column(const QString& table, const QString& id, const QString& name) const;

    std::unique_ptr<TestDatabase> m_database;
};

void ContextStoreTest::init()
{
    Clock::pin(deletedAt);
    m_database = std::make_unique<TestDatabase>();
    QVERIFY(m_database->isReady());
}

void ContextStoreTest::cleanup()
{
    m_database.reset();
    QFile::remove(predefinedObjectsPath());
    Clock::unpin();
}

void ContextStoreTest::addContext(const QString& id, const QString& parent, int state, uint timestamp)
{
    QVERIFY(store()->createContextRemotely(RecordBuilder::context(id)
                                               .withId(id)
                                               .inParent(parent)
                                               .withState(state)
                                               .withTimestamp(timestamp)
                                               .fromServer()));
}

void ContextStoreTest::addObject(const QString& table, const QString& id, const QString& context, int state)
{
    RecordBuilder object = table == "task" ? RecordBuilder::task(id) : RecordBuilder::project(id);
    object.withId(id).withContext(context).withState(state).withTimestamp(createdStamp).fromServer();
    QVERIFY(m_database->handler()->insertObject(object, table));
}

QVariant ContextStoreTest::column(const QString& table, const QString& id, const QString& name) const
{
    return m_database->value(QStringLiteral("SELECT %1 FROM %2 WHERE id = ?").arg(name, table), {id});
}

void ContextStoreTest::deletingContextDetachesTasksAndProjectsInEveryState()
{
    addContext(home, "");
    addContext("garden", home);
    addContext("shed", "garden");
    const QList<QStringList> objects = {
        {"task", "t-active", home, "0"},         {"task", "t-deleted", home, "1"},
        {"task", "t-completed", home, "2"},      {"task", "t-both", "garden", "3"},
        {"task", "t-shed", "shed", "0"},         {"project", "p-active", home, "0"},
        {"project", "p-deleted", "garden", "1"}, {"project", "p-completed", home, "2"}};
    for (const QStringList& object : objects)
        addObject(object[0], object[1], object[2], object[3].toInt());

    QList<DataObject> updated;
    QVERIFY(store()->updateContextLocally(changed(store()->getContextById(home), {{"STATE", 1}}), &updated));

    for (const QString& id : {home, QStringLiteral("garden"), QStringLiteral("shed")}) {
        QCOMPARE(column("context", id, "state").toInt(), DELETED_OBJECT_STATE);
        QCOMPARE(column("context", id, "synced").toInt(), 0);
    }
    for (const QStringList& object : objects) {
        QCOMPARE(column(object[0], object[1], "state").toString(), object[3]);
        QCOMPARE(column(object[0], object[1], "context").toString(), QString());
        QCOMPARE(column(object[0], object[1], "synced").toInt(), 0);
        QCOMPARE(column(object[0], object[1], "timestamp").toUInt(), deletedStamp);
    }
    QCOMPARE(idsOf(updated), QSet<QString>({home, "garden", "shed", "t-active", "t-completed", "t-shed",
                                            "p-active", "p-completed"}));
}

void ContextStoreTest::restoreBringsChildrenBackOnlyInsideTrashHorizon_data()
{
    QTest::addColumn<int>("daysAfterDeletion");
    QTest::addColumn<int>("childState");
    QTest::newRow("inside the horizon") << 13 << DEFAULT_OBJECT_STATE;
    QTest::newRow("outside the horizon") << 15 << DELETED_OBJECT_STATE;
}

void ContextStoreTest::restoreBringsChildrenBackOnlyInsideTrashHorizon()
{
    QFETCH(int, daysAfterDeletion);
    QFETCH(int, childState);
    addContext(home, "");
    addContext("garden", home);
    addContext("orphan", "missing", DELETED_OBJECT_STATE, deletedStamp);
    addObject("task", "t-active", home, DEFAULT_OBJECT_STATE);
    QVERIFY(store()->updateContextLocally(changed(store()->getContextById(home), {{"STATE", 1}})));

    Clock::pin(deletedAt.addDays(daysAfterDeletion));
    QVERIFY(store()->restoreContext(store()->getContextById(home)));
    QVERIFY(store()->restoreContext(store()->getContextById("orphan")));

    QCOMPARE(column("context", home, "state").toInt(), DEFAULT_OBJECT_STATE);
    QCOMPARE(column("context", "garden", "state").toInt(), childState);
    QCOMPARE(column("task", "t-active", "context").toString(), QString());
    QCOMPARE(column("context", "orphan", "state").toInt(), DEFAULT_OBJECT_STATE);
    QCOMPARE(column("context", "orphan", "parent").toString(), QString());
}

void ContextStoreTest::remoteActiveContextRevivesDeletedAncestorsAsSynced()
{
    addContext(home, "", DELETED_OBJECT_STATE);
    addContext("garden", home, DELETED_OBJECT_STATE);
    addContext("shed", "garden", DELETED_OBJECT_STATE);

    const DOContext shed = changed(store()->getContextById("shed"), {{"STATE", 0}, {"SYNC", true}});
    QVERIFY(store()->updateContextRemotely(shed));

    for (const QString& id : {home, QStringLiteral("garden"), QStringLiteral("shed")}) {
        QCOMPARE(column("context", id, "state").toInt(), DEFAULT_OBJECT_STATE);
        QCOMPARE(column("context", id, "synced").toInt(), 1);
        QCOMPARE(column("context", id, "timestamp").toUInt(), createdStamp);
    }
}

void ContextStoreTest::remoteDeletionCascadesAsLocalWrite()
{
    addContext(home, "");
    addContext("garden", home);
    addObject("task", "t-active", "garden", DEFAULT_OBJECT_STATE);

    QVERIFY(store()->updateContextRemotely(
        changed(store()->getContextById(home), {{"STATE", 1}, {"SYNC", true}})));

    QCOMPARE(column("context", home, "synced").toInt(), 1);
    QCOMPARE(column("context", home, "timestamp").toUInt(), createdStamp);
    QCOMPARE(column("context", "garden", "state").toInt(), DELETED_OBJECT_STATE);
    QCOMPARE(column("context", "garden", "synced").toInt(), 0);
    QCOMPARE(column("task", "t-active", "context").toString(), QString());
    QCOMPARE(column("task", "t-active", "synced").toInt(), 0);
}

void ContextStoreTest::recursiveCountsFollowSubcontextsInEveryState()
{
    addContext(home, "");
    addContext("garden", home, DELETED_OBJECT_STATE);
    addObject("task", "t-home", home, DEFAULT_OBJECT_STATE);
    addObject("task", "t-garden", "garden", DEFAULT_OBJECT_STATE);
    addObject("task", "t-completed", home, COMPLETED_OBJECT_STATE);
    addObject("project", "p-garden", "garden", DEFAULT_OBJECT_STATE);
    addObject("project", "p-deleted", home, DELETED_OBJECT_STATE);

    QCOMPARE(store()->getContextTaskCountRecursive(home), 2);
    QCOMPARE(store()->getContextProjectCountRecursive(home), 1);
    QCOMPARE(store()->getContextProjectCount(home), 0);
    QVERIFY(store()->contextHasActiveObjects(store()->getContextById(home)));
    QVERIFY(!store()->contextHasActiveObjects({{"ID", "unused"}}));
}

void ContextStoreTest::nestedContextCount_data()
{
    QTest::addColumn<bool>("includeAllStates");
    QTest::addColumn<int>("count");
    QTest::newRow("active ones, whenever changed") << false << 3;
    QTest::newRow("all states, changed inside the horizon") << true << 4;
}

void ContextStoreTest::nestedContextCount()
{
    QFETCH(bool, includeAllStates);
    QFETCH(int, count);
    addContext(home, "");
    addContext("garden", home);
    addContext("shed", "garden");
    addContext("attic", home, DELETED_OBJECT_STATE);
    addContext("cellar", "garden", DELETED_OBJECT_STATE);
    addContext("untouched", home, DEFAULT_OBJECT_STATE, createdStamp - 30 * 86400);

    QCOMPARE(store()->getNestedContextCount(home, includeAllStates), count);
}

void ContextStoreTest::contextWithoutParentRowIsAtLevelZero()
{
    addContext("root", "");
    addContext("child", "root");
    addContext("orphan", "missing");
    addContext("gone", "", DELETED_OBJECT_STATE);
    addContext("left", "gone");

    QCOMPARE(idsOf(store()->getRootContexts()), QSet<QString>({"root", "orphan"}));
    const TreeHierarchy tree = store()->getContextTree();
    QCOMPARE(idsOf(tree.objectById.values()), QSet<QString>({"root", "child", "orphan", "left"}));
    QCOMPARE(tree.objectById.value("left").value("LEVEL").toInt(), 1);
    QCOMPARE(idsOf(tree.rootObjects), QSet<QString>({"root", "orphan"}));
    for (const DataObject& root : tree.rootObjects) {
        const auto children = root.value("CHILDREN").value<QList<DataObject>>();
        QCOMPARE(idsOf(children), root.value("ID") == "root" ? QSet<QString>({"child"}) : QSet<QString>());
    }
}

void ContextStoreTest::childrenAndSubtreeReads()
{
    addContext(home, "");
    addContext("garden", home);
    addContext("shed", "garden", DELETED_OBJECT_STATE);
    addContext("porch", "garden");
    addObject("task", "t-garden", "garden", DEFAULT_OBJECT_STATE);
    addObject("project", "p-garden", "garden", COMPLETED_OBJECT_STATE);

    QStringList children;
    for (const DataObject& child : store()->getContextChildren("garden"))
        children.append(child.value("ID").toString());
    QCOMPARE(children, QStringList({"porch", "p-garden", "t-garden"}));
    QCOMPARE(store()->getContextNameChain("shed"), QStringList({home, "garden", "shed"}));
    const QList<DOContext> subtree = store()->getSubcontextsRecursive(home);
    QCOMPARE(idsOf(subtree), QSet<QString>({home, "garden", "shed", "porch"}));
    QCOMPARE(subtree.first().value("STATE").toInt(), DELETED_OBJECT_STATE);
}

void ContextStoreTest::contextCountLeavesOutPredefinedContexts()
{
    QStringList ids;
    for (int number = 300; number <= 305; ++number) {
        ids.append(QStringLiteral("seed-%1").arg(number));
        addContext(ids.last(), "", number % 2);
    }
    QSettings(predefinedObjectsPath(), QSettings::IniFormat).setValue("predefined_ids", "," + ids.join(','));
    QCOMPARE(store()->getContextCount(), 0);

    QVERIFY(store()->createContextLocally(RecordBuilder::context("Errands")));
    QCOMPARE(store()->getContextCount(), 1);
}

void ContextStoreTest::predefinedContextTakesServerId_data()
{
    QTest::addColumn<bool>("isDeleted");
    QTest::addColumn<QString>("contextOfObjects");
    QTest::newRow("kept on the server") << false << "server-id";
    QTest::newRow("deleted on the server") << true << "";
}

void ContextStoreTest::predefinedContextTakesServerId()
{
    QFETCH(bool, isDeleted);
    QFETCH(QString, contextOfObjects);
    QVERIFY(store()->createContextLocally(RecordBuilder::context("@home").withId(home)));
    addContext("garden", home);
    addObject("task", "t-home", home, DEFAULT_OBJECT_STATE);
    addObject("project", "p-home", home, DEFAULT_OBJECT_STATE);

    QVERIFY(store()->updatePredefinedContext(home, "server-id", isDeleted));

    QVERIFY(store()->getContextById(home).isEmpty());
    QCOMPARE(column("context", "server-id", "local").toInt(), 0);
    QCOMPARE(column("context", "server-id", "synced").toInt(), 1);
    QCOMPARE(column("context", "garden", "parent").toString(), QStringLiteral("server-id"));
    QCOMPARE(column("task", "t-home", "context").toString(), contextOfObjects);
    QCOMPARE(column("project", "p-home", "context").toString(), contextOfObjects);
    const QList<QStringList> touched = {{"context", "garden"}, {"task", "t-home"}, {"project", "p-home"}};
    for (const QStringList& object : touched) {
        QCOMPARE(column(object[0], object[1], "synced").toInt(), 0);
        QCOMPARE(column(object[0], object[1], "timestamp").toUInt(), deletedStamp);
    }
}

NORVEL_TEST_MAIN(ContextStoreTest)
#include "contextstoretest.moc"

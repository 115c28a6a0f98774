#include "store/projectstore.h"
#include "core/clock.h"
#include "store/databasehandler.h"
#include "store/dataobjectconverter.h"
#include "store/taskstore.h"
#include "testlib/recordbuilder.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QSettings>
#include <QStandardPaths>
#include <QtTest>

namespace {
// 10:00 in Berlin on 5 March; the trash keeps the 14 days before.
const QDateTime pinnedNow = QDateTime(QDate(2024, 3, 5), QTime(9, 0), Qt::UTC);
const uint now = uint(pinnedNow.toSecsSinceEpoch());
const uint recent = now - 2 * 86400;
const uint old = now - 20 * 86400;
const QString osaId = QString::fromLatin1(RecordBuilder::oneStepActionsId);
const QString inboxId = QString::fromLatin1(RecordBuilder::inboxId);

// A fresh database with rows written as the server sent them (synced, known to the server).
class Rows
{
public:
    ProjectStore* projects() const { return database.handler()->projects(); }
    TaskStore* tasks() const { return database.handler()->tasks(); }

    void add(const QString& table, DataObject object, uint timestamp = recent)
    {
        object.insert(QStringLiteral("SYNC"), true);
        object.insert(QStringLiteral("TIMESTAMP"), timestamp);
        DataObjectConverter::prepareDates(object);
        QVERIFY(database.handler()->insertObject(object, table));
    }
    void addFolder(const QString& id, const QString& parent, int state = 0, uint timestamp = recent)
    {
        add("project", RecordBuilder::folder(id).withId(id).inParent(parent).withState(state), timestamp);
    }
    void addProject(const QString& id, const QString& parent, int state = 0, uint timestamp = recent)
    {
        add("project", RecordBuilder::project(id).withId(id).inParent(parent).withState(state), timestamp);
    }
    void addTask(const QString& id, const QString& parent, int state = 0)
    {
        add("task", RecordBuilder::task(id).withId(id).inParent(parent).withState(state));
    }
    void markLocal(const QString& table, const QString& id)
    {
        database.rows(QStringLiteral("UPDATE %1 SET local = 1, synced = 0 WHERE id = ?").arg(table), {id});
    }
    QVariantMap row(const QString& table, const QString& id) const
    {
        return database.rows(QStringLiteral("SELECT * FROM %1 WHERE id = ?").arg(table), {id}).value(0);
    }
    int state(const QString& table, const QString& id) const { return row(table, id).value("state").toInt(); }

    TestDatabase database;
};

QStringList sortedIds(const QList<DataObject>& objects)
{
    QStringList ids;
    for (const DataObject& object : objects)
        ids.append(object.value("ID").toString());
    ids.sort();
    return ids;
}
} // namespace

class ProjectStoreTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Clock::pin(pinnedNow); }
    void cleanup() { Clock::unpin(); }

    void deletingProjectMovesServerKnownTasksOnlyOutOfLocalProjects_data()
    {
        QTest::addColumn<bool>("projectLocal");
        QTest::addColumn<bool>("taskLocal");
        QTest::addColumn<int>("newState");
        QTest::addColumn<bool>("moved");

        QTest::newRow("local project deleted, known task") << true << false << 1 << true;
        QTest::newRow("local project completed and deleted, known task") << true << false << 3 << true;
        QTest::newRow("local project deleted, local task") << true << true << 1 << false;
        QTest::newRow("known project deleted, known task") << false << false << 1 << false;
        QTest::newRow("local project completed, known task") << true << false << 2 << false;
    }

    void deletingProjectMovesServerKnownTasksOnlyOutOfLocalProjects()
    {
        QFETCH(bool, projectLocal);
        QFETCH(bool, taskLocal);
        QFETCH(int, newState);
        QFETCH(bool, moved);
        Rows rows;
        rows.addProject("p", "");
        rows.addTask("t", "p");
        if (projectLocal)
            rows.markLocal("project", "p");
        if (taskLocal)
            rows.markLocal("task", "t");

        DataObject project = rows.projects()->getProjectById("p");
        project.insert("STATE", newState);
        QVERIFY(rows.projects()->updateProjectLocally(project));

        QCOMPARE(rows.state("task", "t"), newState);
        QCOMPARE(rows.row("task", "t").value("parent").toString(), moved ? osaId : QString("p"));
        QVERIFY(rows.tasks()->restoreTask(rows.tasks()->getTaskById("t")));
        QCOMPARE(rows.row("task", "t").value("parent").toString(), moved ? osaId : QString("p"));
    }

    void completingFolderCompletesSubtreeAndEndsRepeatingTasks()
    {
        Rows rows;
        rows.addFolder("f", "");
        rows.addProject("p", "f");
        rows.addFolder("s", "f");
        rows.addProject("q", "s");
        rows.addProject("gone", "f", DELETED_OBJECT_STATE);
        const QDateTime due = wallClock(QDate(2024, 3, 6), QTime(18, 0));
        rows.add("task", RecordBuilder::task().withId("repeating").inParent("q").repeating("d;1").dueAt(due));
        rows.addTask("deleted", "q", DELETED_OBJECT_STATE);

        DataObject folder = rows.projects()->getProjectById("f");
        folder.insert("STATE", COMPLETED_OBJECT_STATE);
        QList<QVariantMap> collected;
        QVERIFY(rows.projects()->updateProjectLocally(folder, &collected));

        QSet<QString> collectedIds;
        for (const QVariantMap& object : collected)
            collectedIds.insert(object.value("ID").toString());
        QCOMPARE(collectedIds, QSet<QString>({"f", "p", "s", "q", "repeating", "deleted"}));

        for (const QString id : {"f", "p", "s", "q"}) {
            QCOMPARE(rows.state("project", id), COMPLETED_OBJECT_STATE);
            QCOMPARE(rows.row("project", id).value("synced").toInt(), 0);
        }
        QCOMPARE(rows.state("project", "gone"), DELETED_OBJECT_STATE);
        QCOMPARE(rows.state("task", "deleted"), COMPLETED_AND_DELETED_OBJECT_STATE);
        const QVariantMap repeating = rows.row("task", "repeating");
        QCOMPARE(repeating.value("state").toInt(), COMPLETED_OBJECT_STATE);
        QCOMPARE(repeating.value("period").toString(), QString());
        QCOMPARE(repeating.value("due").toLongLong(), due.toSecsSinceEpoch());
    }

    void contextRemovalUpdatesProjectWithoutCascade()
    {
        Rows rows;
        rows.addProject("p", "");
        rows.addTask("t", "p");

        DataObject project = rows.projects()->getProjectById("p");
        project.insert("STATE", DELETED_OBJECT_STATE);
        project.insert("CONTEXT", QString());
        QVariantMap updated;
        QVERIFY(rows.projects()->updateProjectLocally(project, nullptr, &updated));

        QCOMPARE(rows.state("project", "p"), DELETED_OBJECT_STATE);
        QCOMPARE(rows.state("task", "t"), DEFAULT_OBJECT_STATE);
        QCOMPARE(updated.value("TIMESTAMP").toUInt(), now);
        QCOMPARE(updated.value("SYNCED").toInt(), 0);
        QVERIFY(!updated.contains("LOCAL"));
    }

    void restoredProjectComesBackCompletedAndStaysInDeletedFolder()
    {
        Rows rows;
        rows.addProject("p", "folder-never-stored", COMPLETED_AND_DELETED_OBJECT_STATE);
        rows.addTask("done", "p", COMPLETED_AND_DELETED_OBJECT_STATE);
        rows.addTask("open", "p", DELETED_OBJECT_STATE);
        rows.addFolder("f", "", DELETED_OBJECT_STATE);
        rows.addProject("q", "f", DELETED_OBJECT_STATE);

        QVERIFY(rows.projects()->restoreProject(rows.projects()->getProjectById("p")));
        QVERIFY(rows.projects()->restoreProject(rows.projects()->getProjectById("q")));

        QCOMPARE(rows.state("project", "p"), COMPLETED_OBJECT_STATE);
        QCOMPARE(rows.row("project", "p").value("parent").toString(), QString());
        QCOMPARE(rows.state("task", "done"), COMPLETED_OBJECT_STATE);
        QCOMPARE(rows.state("task", "open"), COMPLETED_OBJECT_STATE);
        QCOMPARE(rows.state("project", "q"), DEFAULT_OBJECT_STATE);
        QCOMPARE(rows.row("project", "q").value("parent").toString(), QString("f"));
        QCOMPARE(rows.state("project", "f"), DELETED_OBJECT_STATE);
    }

    void serverActivatedChildRevivesDeletedAncestorsWithoutMarkingThem()
    {
        Rows rows;
        rows.addFolder("top", "missing", DELETED_OBJECT_STATE, old);
        rows.addFolder("middle", "top", COMPLETED_AND_DELETED_OBJECT_STATE, old);
        rows.addFolder("completed", "middle", COMPLETED_OBJECT_STATE, old);
        rows.addProject("p", "completed", DELETED_OBJECT_STATE, old);
        rows.addFolder("unrelated", "", DELETED_OBJECT_STATE, old);

        DataObject fromServer = rows.projects()->getProjectById("p");
        fromServer.insert("STATE", DEFAULT_OBJECT_STATE);
        fromServer.insert("SYNC", true);
        fromServer.insert("TIMESTAMP", recent);
        QVERIFY(rows.projects()->updateProjectRemotely(fromServer));

        QCOMPARE(rows.state("project", "p"), DEFAULT_OBJECT_STATE);
        QCOMPARE(rows.state("project", "completed"), COMPLETED_OBJECT_STATE);
        QCOMPARE(rows.state("project", "middle"), DEFAULT_OBJECT_STATE);
        QCOMPARE(rows.state("project", "top"), DEFAULT_OBJECT_STATE);
        QCOMPARE(rows.state("project", "unrelated"), DELETED_OBJECT_STATE);
        for (const QString id : {"middle", "top"}) {
            QCOMPARE(rows.row("project", id).value("synced").toInt(), 1);
            QCOMPARE(rows.row("project", id).value("timestamp").toUInt(), old);
        }
    }

    void restoreFolderBringsBackOnlyChildrenInsideTrashHorizon()
    {
        Rows rows;
        rows.addFolder("f", "", DELETED_OBJECT_STATE, old);
        rows.addProject("old-project", "f", DELETED_OBJECT_STATE, old);
        rows.addProject("recent-project", "f", COMPLETED_AND_DELETED_OBJECT_STATE);
        rows.addFolder("recent-folder", "f", DELETED_OBJECT_STATE);
        rows.addProject("nested", "recent-folder", DELETED_OBJECT_STATE);

        QVERIFY(!rows.projects()->restoreFolder(rows.projects()->getProjectById("old-project")));
        QVERIFY(rows.projects()->restoreFolder(rows.projects()->getProjectById("f")));

        QCOMPARE(rows.state("project", "f"), DEFAULT_OBJECT_STATE);
        QCOMPARE(rows.state("project", "old-project"), DELETED_OBJECT_STATE);
        QCOMPARE(rows.state("project", "recent-project"), COMPLETED_OBJECT_STATE);
        QCOMPARE(rows.state("project", "recent-folder"), DEFAULT_OBJECT_STATE);
        QCOMPARE(rows.state("project", "nested"), DEFAULT_OBJECT_STATE);
    }

    void failedCascadeStepReturnsFalseWithTransactionOpen()
    {
        Rows rows;
        rows.addProject("p", "");
        rows.addTask("accepted", "p");
        rows.addTask("refused", "p");
        rows.database.rows("CREATE TRIGGER refuse BEFORE UPDATE ON task WHEN OLD.id = 'refused' "
                           "BEGIN SELECT RAISE(ABORT, 'refused'); END");

        DataObject project = rows.projects()->getProjectById("p");
        project.insert("STATE", DELETED_OBJECT_STATE);
        QVERIFY(!rows.projects()->updateProjectLocally(project));

        QCOMPARE(rows.state("project", "p"), DEFAULT_OBJECT_STATE);
        QCOMPARE(rows.state("task", "accepted"), DELETED_OBJECT_STATE);
        QCOMPARE(rows.database.committedValue("SELECT state FROM task WHERE id = 'accepted'").toInt(), 0);
        QVERIFY(rows.database.handler()->rollbackChanges());
        QCOMPARE(rows.state("task", "accepted"), DEFAULT_OBJECT_STATE);
    }

    void rootProjectsIncludeChildOfUndeliveredParent()
    {
        Rows rows;
        rows.addFolder("f", "");
        rows.addProject("child", "f");
        rows.addProject("orphan", "never-delivered", COMPLETED_OBJECT_STATE);
        rows.addProject("deleted", "", DELETED_OBJECT_STATE);

        const QList<DataObject> roots = rows.projects()->getRootProjects();
        QCOMPARE(sortedIds(roots), QStringList({"f", "orphan"}));
        QCOMPARE(roots.value(0).value("LEVEL").toInt(), 0);
    }

    void recursiveReadIncludesSeedRowAndEveryState()
    {
        Rows rows;
        rows.addFolder("f", "");
        rows.addProject("p", "f");
        rows.addFolder("s", "f", DELETED_OBJECT_STATE);
        rows.addProject("q", "s", COMPLETED_AND_DELETED_OBJECT_STATE);
        rows.addProject("outside", "");

        const QList<DataObject> subtree = rows.projects()->getSubprojectsRecursive("f");
        QCOMPARE(sortedIds(subtree), QStringList({"f", "p", "q", "s"}));
        const auto seed = std::find_if(subtree.cbegin(), subtree.cend(), [](const DataObject& object) {
            return object.value("ID") == "f" && object.value("NAME").toString().isEmpty();
        });
        QVERIFY(seed != subtree.cend());
        QCOMPARE(seed->value("STATE").toInt(), DELETED_OBJECT_STATE);
        QCOMPARE(seed->value("FOLDER").toInt(), 1);
        QCOMPARE(seed->value("TIMESTAMP").toInt(), 0);
    }

    void nameChainStartsAtRoot()
    {
        Rows rows;
        rows.addFolder("Root", "");
        rows.addFolder("Middle", "Root", DELETED_OBJECT_STATE);
        rows.addProject("Leaf", "Middle");

        QCOMPARE(rows.projects()->getProjectNameChain("Leaf"), QStringList({"Root", "Middle", "Leaf"}));
    }

    void nestedCountsFollowStateAndHorizon_data()
    {
        QTest::addColumn<bool>("folders");
        QTest::addColumn<bool>("includeDeleted");
        QTest::addColumn<int>("expected");

        QTest::newRow("folders, active only") << true << false << 1;
        QTest::newRow("folders, with deleted") << true << true << 2;
        QTest::newRow("projects, active only, old ones too") << false << false << 3;
        QTest::newRow("projects, with deleted, inside horizon") << false << true << 4;
    }

    void nestedCountsFollowStateAndHorizon()
    {
        QFETCH(bool, folders);
        QFETCH(bool, includeDeleted);
        QFETCH(int, expected);
        Rows rows;
        rows.addFolder("f", "");
        rows.addProject("active", "f");
        rows.addProject("deleted", "f", DELETED_OBJECT_STATE);
        rows.addProject("completed", "f", COMPLETED_OBJECT_STATE);
        rows.addProject("unchanged-for-long", "f", DEFAULT_OBJECT_STATE, old);
        rows.addFolder("subfolder", "f");
        rows.addFolder("deleted-subfolder", "f", DELETED_OBJECT_STATE);
        rows.addProject("inside-deleted-subfolder", "deleted-subfolder");

        ProjectStore* projects = rows.projects();
        QCOMPARE(folders ? projects->getNestedFolderCount("f", includeDeleted)
                         : projects->getNestedProjectCount("f", includeDeleted),
                 expected);
    }

    void projectTaskCount_data()
    {
        QTest::addColumn<QString>("projectId");
        QTest::addColumn<int>("expected");

        QTest::newRow("deleted project counts every task") << "deleted" << 4;
        QTest::newRow("completed and deleted project counts every task") << "completed-deleted" << 4;
        QTest::newRow("active project counts active tasks") << "active" << 1;
        QTest::newRow("inbox counts active tasks") << inboxId << 1;
        QTest::newRow("one step actions count active tasks") << osaId << 1;
        QTest::newRow("missing project") << "missing" << 0;
    }

    void projectTaskCount()
    {
        QFETCH(QString, projectId);
        QFETCH(int, expected);
        Rows rows;
        rows.addProject("deleted", "", DELETED_OBJECT_STATE);
        rows.addProject("completed-deleted", "", COMPLETED_AND_DELETED_OBJECT_STATE);
        rows.addProject("active", "");
        for (int state = 0; state <= COMPLETED_AND_DELETED_OBJECT_STATE; ++state)
            rows.addTask(QString("task-%1").arg(state), projectId, state);

        QCOMPARE(rows.projects()->getProjectTaskCount(projectId), expected);
    }

    void foldersToSyncSplitByDeletion()
    {
        Rows rows;
        rows.addFolder("child", "parent");
        rows.addFolder("parent", "");
        rows.addFolder("completed", "", COMPLETED_OBJECT_STATE);
        rows.addFolder("deleted", "", DELETED_OBJECT_STATE);
        rows.addFolder("deleted-child", "deleted", DELETED_OBJECT_STATE);
        rows.addFolder("in-step", "");
        rows.addProject("project", "");
        for (const QString id : {"child", "parent", "completed", "deleted", "deleted-child", "project"})
            rows.database.rows("UPDATE project SET synced = 0 WHERE id = ?", {id});

        const QList<DOFolder> toUpdate = rows.projects()->getFoldersToUpdate();
        QCOMPARE(sortedIds(toUpdate), QStringList({"child", "completed", "parent"}));
        QCOMPARE(toUpdate.last().value("ID").toString(), QString("child"));
        const QList<DOFolder> toDelete = rows.projects()->getFoldersToDelete();
        QCOMPARE(sortedIds(toDelete), QStringList({"deleted", "deleted-child"}));
        QCOMPARE(toDelete.first().value("ID").toString(), QString("deleted-child"));
    }

    void predefinedFolderTakesServerIdAndKeepsChildren()
    {
        Rows rows;
        rows.addFolder("seed", "", DEFAULT_OBJECT_STATE, old);
        rows.markLocal("project", "seed");
        rows.addProject("child", "seed", DEFAULT_OBJECT_STATE, old);

        QVERIFY(rows.projects()->updatePredefinedFolder("seed", "server's id"));

        QVERIFY(rows.row("project", "seed").isEmpty());
        const QVariantMap folder = rows.row("project", "server's id");
        QCOMPARE(folder.value("local").toInt(), 0);
        QCOMPARE(folder.value("synced").toInt(), 1);
        QCOMPARE(folder.value("timestamp").toUInt(), now);
        const QVariantMap child = rows.row("project", "child");
        QCOMPARE(child.value("parent").toString(), QString("server's id"));
        QCOMPARE(child.value("synced").toInt(), 0);
        QCOMPARE(child.value("timestamp").toUInt(), now);
    }

    void projectCountLeavesOutPredefinedIds()
    {
        Rows rows;
        rows.addProject("seed's project", "", DELETED_OBJECT_STATE);
        rows.addProject("own", "", COMPLETED_AND_DELETED_OBJECT_STATE);
        rows.addFolder("folder", "");
        QSettings predefined(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
                                 "/predefined_objects.dat",
                             QSettings::IniFormat);

        predefined.setValue("predefined_ids", QString());
        predefined.sync();
        QCOMPARE(rows.projects()->getProjectCount(), 2);
        predefined.setValue("predefined_ids", ",folder,seed's project");
        predefined.sync();
        QCOMPARE(rows.projects()->getProjectCount(), 1);
    }

    void dayProjects_data()
    {
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("today, overdue included") << QDate(2024, 3, 5)
                                                 << QStringList({"completed-today", "due-later", "due-on-7th",
                                                                 "due-today", "overdue", "started-undated"});
        QTest::newRow("past day") << QDate(2024, 3, 3) << QStringList({"completed-on-3rd", "overdue"});
        QTest::newRow("future day") << QDate(2024, 3, 7)
                                    << QStringList({"due-later", "due-on-7th", "started-undated"});
    }

    void dayProjects()
    {
        QFETCH(QDate, day);
        QFETCH(QStringList, expected);
        Rows rows;
        const auto on = [](int dayOfMarch, int hour) {
            return wallClock(QDate(2024, 3, dayOfMarch), QTime(hour, 0));
        };
        const auto add = [&rows](const QString& id, const QDateTime& start, const QDateTime& due,
                                 int state = 0) {
            rows.add("project",
                     RecordBuilder::project(id).withId(id).startingAt(start).dueAt(due).withState(state));
        };
        add("overdue", QDateTime(), on(3, 12));
        add("completed-on-3rd", QDateTime(), on(3, 8), COMPLETED_OBJECT_STATE);
        add("due-today", QDateTime(), on(5, 18));
        add("completed-today", QDateTime(), on(5, 9), COMPLETED_OBJECT_STATE);
        add("deleted-today", QDateTime(), on(5, 9), DELETED_OBJECT_STATE);
        add("due-on-7th", QDateTime(), on(7, 10));
        add("due-later", on(4, 8), on(10, 8));
        add("starts-after-7th", on(8, 12), on(10, 8));
        add("started-undated", on(1, 8), QDateTime());
        add("undated", QDateTime(), QDateTime());

        QCOMPARE(sortedIds(rows.projects()->getDayProjects(day)), expected);
    }
};

NORVEL_TEST_MAIN(ProjectStoreTest)
#include "projectstoretest.moc"

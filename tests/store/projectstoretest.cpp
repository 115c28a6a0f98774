#include "store/projectstore.h"
#include "core/clock.h"
#include "store/databasehandler.h"
#include "store/taskstore.h"
#include "testlib/recordbuilder.h"
#include "testlib/storehelpers.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

namespace {
// 10:00 in Berlin on 5 March; the trash keeps the 14 days before.
const QDateTime pinnedNow = QDateTime(QDate(2024, 3, 5), QTime(9, 0), Qt::UTC);
const uint now = uint(pinnedNow.toSecsSinceEpoch());
const uint recent = now - 2 * 86400;
const uint old = now - 20 * 86400;
const QString osaId = QString::fromLatin1(RecordBuilder::oneStepActionsId);

// Rows as the server sent them: synced and known to the server.
RecordBuilder delivered(RecordBuilder record, const QString& id, const QString& parent, int state,
                        uint timestamp)
{
    return record.withId(id).inParent(parent).withState(state).withTimestamp(timestamp).fromServer();
}

RecordBuilder folder(const QString& id, const QString& parent, int state = 0, uint timestamp = recent)
{
    return delivered(RecordBuilder::folder(id), id, parent, state, timestamp);
}

RecordBuilder project(const QString& id, const QString& parent, int state = 0, uint timestamp = recent)
{
    return folder(id, parent, state, timestamp).with("FOLDER", false);
}

RecordBuilder task(const QString& id, const QString& parent, int state = 0)
{
    return delivered(RecordBuilder::task(id), id, parent, state, recent);
}
} // namespace

class ProjectStoreTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestDatabase> m_database;

    ProjectStore* projects() const { return m_database->handler()->projects(); }
    TaskStore* tasks() const { return m_database->handler()->tasks(); }
    void addProjects(const QList<QVariantMap>& rows)
    {
        QVERIFY(insertRecords(m_database->handler(), "project", rows));
    }
    void addTasks(const QList<QVariantMap>& rows)
    {
        QVERIFY(insertRecords(m_database->handler(), "task", rows));
    }
    QVariant field(const QString& table, const QString& id, const QString& column) const
    {
        return columnOf(*m_database, table, id, column);
    }

private slots:
    void init()
    {
        Clock::pin(pinnedNow);
        m_database = std::make_unique<TestDatabase>();
        QVERIFY(m_database->isReady());
    }

    void cleanup()
    {
        m_database.reset();
        Clock::unpin();
    }

    void deletingProjectMovesServerKnownTasksOnlyOutOfLocalProjects_data()
    {
        QTest::addColumn<bool>("projectLocal");
        QTest::addColumn<bool>("taskLocal");
        QTest::addColumn<int>("newState");
        QTest::addColumn<bool>("moved");

        QTest::newRow("local project deleted, known task") << true << false << 1 << true;
        QTest::newRow("local project deleted, local task") << true << true << 1 << false;
        QTest::newRow("known project deleted, known task") << false << false << 1 << false;
        QTest::newRow("local project completed, known task") << true << false << 2 << false;
    }

    void deletingProjectMovesServerKnownTasksOnlyOutOfLocalProjects()
    {
        QFETCH(bool, projectLocal);
        QFETCH(bool, taskLocal);
        QFETCH(int, newState);
        addProjects({projectLocal ? project("p", "").without("SYNC") : project("p", "")});
        addTasks({taskLocal ? task("t", "p").without("SYNC") : task("t", "p")});

        QVERIFY(projects()->updateProjectLocally(
            changed(projects()->getProjectById("p"), {{"STATE", newState}})));

        QCOMPARE(field("task", "t", "state").toInt(), newState);
        QFETCH(bool, moved);
        const QString parent = moved ? osaId : QStringLiteral("p");
        QCOMPARE(field("task", "t", "parent").toString(), parent);
        QVERIFY(tasks()->restoreTask(tasks()->getTaskById("t")));
        QCOMPARE(field("task", "t", "parent").toString(), parent);
    }

    void completingFolderCompletesSubtreeAndEndsRepeatingTasks()
    {
        addProjects({folder("f", ""), project("p", "f"), folder("s", "f"), project("q", "s"),
                     project("gone", "f", DELETED_OBJECT_STATE)});
        const QDateTime due = wallClock(QDate(2024, 3, 6), QTime(18, 0));
        addTasks(
            {task("repeating", "q").repeating("d;1").dueAt(due), task("deleted", "q", DELETED_OBJECT_STATE)});
        QList<QVariantMap> collected;

        QVERIFY(projects()->updateProjectLocally(changed(projects()->getProjectById("f"), {{"STATE", 2}}),
                                                 &collected));

        QCOMPARE(idSetOf(collected), QSet<QString>({"f", "p", "s", "q", "repeating", "deleted"}));
        QCOMPARE(statesOf(*m_database, "project", {"f", "p", "s", "q", "gone"}), QList<int>({2, 2, 2, 2, 1}));
        for (const QString id : {"f", "p", "s", "q"})
            QCOMPARE(field("project", id, "synced").toInt(), 0);
        QCOMPARE(statesOf(*m_database, "task", {"deleted", "repeating"}), QList<int>({3, 2}));
        QCOMPARE(field("task", "repeating", "period").toString(), QString());
        QCOMPARE(field("task", "repeating", "due").toLongLong(), due.toSecsSinceEpoch());
        // Handed back as written: dates in seconds, not as date-times.
        const auto written =
            std::find_if(collected.cbegin(), collected.cend(),
                         [](const QVariantMap& object) { return object["ID"] == "repeating"; });
        QCOMPARE(written->value("DUE"), QVariant(uint(due.toSecsSinceEpoch())));
    }

    void restoredProjectComesBackCompletedAndStaysInDeletedFolder()
    {
        addProjects({project("p", "folder-never-stored", COMPLETED_AND_DELETED_OBJECT_STATE),
                     folder("f", "", DELETED_OBJECT_STATE), project("q", "f", DELETED_OBJECT_STATE)});
        addTasks({task("done", "p", COMPLETED_AND_DELETED_OBJECT_STATE), task("open", "p", 1)});

        QVERIFY(projects()->restoreProject(projects()->getProjectById("p")));
        QVERIFY(projects()->restoreProject(projects()->getProjectById("q")));

        QCOMPARE(statesOf(*m_database, "project", {"p", "q", "f"}), QList<int>({2, 0, 1}));
        QCOMPARE(statesOf(*m_database, "task", {"done", "open"}), QList<int>({2, 2}));
        QCOMPARE(field("project", "p", "parent").toString(), QString());
        QCOMPARE(field("project", "q", "parent").toString(), QString("f"));
    }

    void serverActivatedChildRevivesDeletedAncestorsWithoutMarkingThem()
    {
        addProjects({folder("top", "missing", DELETED_OBJECT_STATE, old),
                     folder("middle", "top", COMPLETED_AND_DELETED_OBJECT_STATE, old),
                     folder("completed", "middle", COMPLETED_OBJECT_STATE, old),
                     project("p", "completed", DELETED_OBJECT_STATE, old),
                     folder("unrelated", "", DELETED_OBJECT_STATE, old)});

        QVERIFY(projects()->updateProjectRemotely(
            changed(projects()->getProjectById("p"), {{"STATE", 0}, {"SYNC", true}, {"TIMESTAMP", recent}})));

        QCOMPARE(statesOf(*m_database, "project", {"p", "completed", "middle", "top", "unrelated"}),
                 QList<int>({0, 2, 0, 0, 1}));
        for (const QString id : {"middle", "top"}) {
            QCOMPARE(field("project", id, "synced").toInt(), 1);
            QCOMPARE(field("project", id, "timestamp").toUInt(), old);
        }
    }

    void restoreFolderBringsBackOnlyChildrenInsideTrashHorizon()
    {
        addProjects({folder("f", "", DELETED_OBJECT_STATE, old),
                     project("old-project", "f", DELETED_OBJECT_STATE, old),
                     project("recent-project", "f", COMPLETED_AND_DELETED_OBJECT_STATE),
                     folder("recent-folder", "f", DELETED_OBJECT_STATE),
                     project("nested", "recent-folder", DELETED_OBJECT_STATE)});

        QVERIFY(!projects()->restoreFolder(projects()->getProjectById("old-project")));
        QVERIFY(projects()->restoreFolder(projects()->getProjectById("f")));

        QCOMPARE(statesOf(*m_database, "project",
                          {"f", "old-project", "recent-project", "recent-folder", "nested"}),
                 QList<int>({0, 1, 2, 0, 0}));
    }

    void rootProjectsIncludeChildOfUndeliveredParent()
    {
        addProjects({folder("f", ""), project("child", "f"), project("orphan", "never-delivered", 2),
                     project("deleted", "", DELETED_OBJECT_STATE)});

        const QList<DataObject> roots = projects()->getRootProjects();

        QCOMPARE(sortedIdsOf(roots), QStringList({"f", "orphan"}));
        for (const DataObject& root : roots)
            QCOMPARE(root.value("LEVEL").toInt(), 0);
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
        addProjects({folder("f", ""), project("active", "f"), project("deleted", "f", 1),
                     project("completed", "f", 2), project("unchanged-for-long", "f", 0, old),
                     folder("subfolder", "f"), folder("deleted-subfolder", "f", 1),
                     project("inside-deleted-subfolder", "deleted-subfolder")});

        QTEST(folders ? projects()->getNestedFolderCount("f", includeDeleted)
                      : projects()->getNestedProjectCount("f", includeDeleted),
              "expected");
    }

    void projectTaskCount_data()
    {
        QTest::addColumn<QString>("projectId");
        QTest::addColumn<int>("expected");

        QTest::newRow("deleted project counts every task") << "deleted" << 4;
        QTest::newRow("active project counts active tasks") << "active" << 1;
        QTest::newRow("one step actions count active tasks") << osaId << 1;
    }

    void projectTaskCount()
    {
        QFETCH(QString, projectId);
        addProjects({project("deleted", "", DELETED_OBJECT_STATE), project("active", "")});
        for (int state = 0; state <= COMPLETED_AND_DELETED_OBJECT_STATE; ++state)
            addTasks({task(QString("task-%1").arg(state), projectId, state)});

        QTEST(projects()->getProjectTaskCount(projectId), "expected");
    }
};

NORVEL_TEST_MAIN(ProjectStoreTest)
#include "projectstoretest.moc"

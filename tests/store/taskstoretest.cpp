#include "store/taskstore.h"
#include "core/clock.h"
#include "store/databasehandler.h"
#include "store/projectstore.h"
#include "testlib/logcapture.h"
#include "testlib/recordbuilder.h"
#include "testlib/storehelpers.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

namespace {
// 14:00 in Berlin; given in UTC, since constants are made before the test time zone is set.
const QDateTime pinnedNow(QDate(2026, 3, 10), QTime(13, 0), Qt::UTC);
const uint pinnedTimestamp = uint(pinnedNow.toSecsSinceEpoch());
const uint daySeconds = 24 * 3600;

QDateTime march(int day, int hour)
{
    return wallClock(QDate(2026, 3, day), QTime(hour, 0));
}
} // namespace

class TaskStoreTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestDatabase> m_database;
    TaskStore* m_tasks = nullptr;

    QString addTask(const QVariantMap& task)
    {
        m_tasks->createTaskLocally(task);
        m_database->handler()->commitChanges();
        return task.value(QStringLiteral("ID"), m_database->handler()->lastCreatedObjectId()).toString();
    }

private slots:
    void init()
    {
        Clock::pin(pinnedNow);
        m_database = std::make_unique<TestDatabase>();
        QVERIFY(m_database->isReady());
        m_tasks = m_database->handler()->tasks();
    }

    void cleanup()
    {
        m_database.reset();
        removeDataFiles();
        Clock::unpin();
    }

    void nextDatesFollowTheRule_data()
    {
        QTest::addColumn<QString>("period");
        QTest::addColumn<QDateTime>("due");
        QTest::addColumn<QDateTime>("nextDue");

        QTest::newRow("every 2 days") << "d;2" << march(10, 18) << march(12, 18);
        QTest::newRow("every 2 weeks") << "w;2" << march(10, 18) << march(24, 18);
        QTest::newRow("Mon Wed Fri, due Friday") << "w;1;1,3,5" << march(13, 18) << march(16, 18);
        QTest::newRow("Mon Wed Fri, due Tuesday stays") << "w;1;1,3,5" << march(10, 18) << march(10, 18);
        QTest::newRow("monthly from 31 January") << "m;1" << wallClock(QDate(2026, 1, 31), QTime(18, 0))
                                                 << wallClock(QDate(2026, 2, 28), QTime(18, 0));
        QTest::newRow("one field stays") << "d" << march(10, 18) << march(10, 18);
    }

    void nextDatesFollowTheRule()
    {
        QFETCH(QString, period);
        QFETCH(QDateTime, due);
        QFETCH(QDateTime, nextDue);
        DOTask task =
            RecordBuilder::task().withId("t-1").repeating(period).startingAt(due.addSecs(-36000)).dueAt(due);
        LogCapture log;

        TaskStore::setupNewTaskDates(task);

        QCOMPARE(task.value("DUE").toDateTime(), nextDue);
        QCOMPARE(task.value("START").toDateTime(), nextDue.addSecs(-36000));
        QCOMPARE(log.contains(QStringLiteral("Task dates updated. { id: t-1, start: %1, due: %2} \n ")
                                  .arg(nextDue.addSecs(-36000).toString(), nextDue.toString())),
                 period.contains(';'));
    }

    void completedRepeatingTaskStaysActive_data()
    {
        QTest::addColumn<QString>("period");
        QTest::addColumn<int>("storedState");
        QTest::addColumn<QDateTime>("storedDue");

        QTest::newRow("daily rule moves on") << "d;1" << int(DEFAULT_OBJECT_STATE) << march(11, 18);
        QTest::newRow("one-field rule looks untouched") << "d" << int(DEFAULT_OBJECT_STATE) << march(10, 18);
        QTest::newRow("no rule completes") << "" << int(COMPLETED_OBJECT_STATE) << march(10, 18);
    }

    void completedRepeatingTaskStaysActive()
    {
        QFETCH(QString, period);
        const QString id = addTask(RecordBuilder::task().repeating(period).dueAt(march(10, 18)));

        QVERIFY(m_tasks->updateTaskLocally(
            changed(m_tasks->getTaskById(id), {{"STATE", COMPLETED_OBJECT_STATE}})));

        const DOTask stored = m_tasks->getTaskById(id);
        QTEST(stored.value("STATE").toInt(), "storedState");
        QTEST(stored.value("DUE").toDateTime(), "storedDue");
    }

    void restoreMovesTaskOutOfMissingProject_data()
    {
        QTest::addColumn<QString>("parent");
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("restoredParent");
        QTest::addColumn<int>("restoredState");

        const QString oneStepActions = QString::fromLatin1(RecordBuilder::oneStepActionsId);
        QTest::newRow("missing project") << "missing-project" << 1 << oneStepActions << 0;
        QTest::newRow("deleted project stays") << "deleted-project" << 1 << "deleted-project" << 0;
        QTest::newRow("inbox") << RecordBuilder::inboxId << 1 << RecordBuilder::inboxId << 0;
        QTest::newRow("completed comes back completed") << "deleted-project" << 3 << "deleted-project" << 2;
    }

    void restoreMovesTaskOutOfMissingProject()
    {
        QFETCH(QString, parent);
        QFETCH(int, state);
        m_database->handler()->projects()->createProjectLocally(
            RecordBuilder::project().withId("deleted-project").withState(DELETED_OBJECT_STATE));
        const QString id = addTask(RecordBuilder::task().inParent(parent).withState(state));

        QVERIFY(m_tasks->restoreTask(m_tasks->getTaskById(id)));

        QTEST(columnOf(*m_database, "task", id, "parent").toString(), "restoredParent");
        QTEST(columnOf(*m_database, "task", id, "state").toInt(), "restoredState");
    }

    void trashShowsTasksDeletedSinceTheHorizon_data()
    {
        QTest::addColumn<uint>("emptiedAt");
        QTest::addColumn<int>("daysAgo");
        QTest::addColumn<bool>("inTrash");

        QTest::newRow("never emptied, 13 days ago") << 0u << 13 << true;
        QTest::newRow("never emptied, 15 days ago") << 0u << 15 << false;
        QTest::newRow("emptied 2 days ago, deleted 3 days ago")
            << pinnedTimestamp - 2 * daySeconds << 3 << false;
        QTest::newRow("emptied 20 days ago, deleted 15 days ago")
            << pinnedTimestamp - 20 * daySeconds << 15 << true;
    }

    void trashShowsTasksDeletedSinceTheHorizon()
    {
        QFETCH(uint, emptiedAt);
        QFETCH(int, daysAgo);
        QFETCH(bool, inTrash);
        if (emptiedAt != 0)
            writeDataFile("settings.dat", "trash_cleanup_timestamp", emptiedAt);
        const QString id = addTask(RecordBuilder::task()
                                       .withState(COMPLETED_AND_DELETED_OBJECT_STATE)
                                       .withTimestamp(pinnedTimestamp - uint(daysAgo) * daySeconds));

        QCOMPARE(idsOf(m_tasks->getDeletedTasks()).contains(id), inTrash);
        QCOMPARE(m_tasks->hasDeletedTasks(), inTrash);
    }
};

NORVEL_TEST_MAIN(TaskStoreTest)

#include "taskstoretest.moc"

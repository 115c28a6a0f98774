#include "services/taskhandler.h"
#include "core/clock.h"
#include "store/datamanager.h"
#include "testlib/recordbuilder.h"
#include "testlib/storehelpers.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QJSEngine>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

namespace {
const QDate today(2026, 3, 10);

QDateTime march(int day)
{
    return wallClock(QDate(2026, 3, day), QTime(9, 0));
}

DataManager* data()
{
    return DataManager::instance();
}

bool syncPending()
{
    return data()->findChild<QTimer*>("delayedSyncTimer")->isActive();
}

// What the daily plan shows for the task today: its occurrence when it has one, else the record.
DOTask taskOnToday(const QString& id)
{
    for (const DataObject& object : data()->getDayTasks(today)) {
        if (object.value("ID") == id)
            return object;
    }
    return data()->getTaskById(id);
}
} // namespace

class TaskHandlerTest : public QObject
{
    Q_OBJECT

    // Made once the database is in place: it starts the data manager.
    TaskHandler* m_handler = nullptr;

private slots:
    void initTestCase()
    {
        QVERIFY(TestDatabase::unpackApplicationDatabase());
        Clock::pin(QDateTime(today, QTime(12, 0)));
        m_handler = new TaskHandler(this);
    }

    void cleanup()
    {
        data()->cancelDelayedSync();
        QVERIFY(onApplicationDatabase("DELETE FROM task").isValid());
        QVERIFY(onApplicationDatabase("DELETE FROM project").isValid());
    }

    void completingRepeatingTaskKeepsACopyAndUndoLeavesNoTrace_data()
    {
        QTest::addColumn<QString>("period");
        QTest::addColumn<QDateTime>("nextDue");
        // Stored due 1 March; today's occurrence is due 10 March.
        QTest::newRow("occurrence carried to today") << "d;1" << march(11);
        QTest::newRow("rule without a count") << "d" << march(1);
    }

    void completingRepeatingTaskKeepsACopyAndUndoLeavesNoTrace()
    {
        QFETCH(QString, period);
        QFETCH(QDateTime, nextDue);
        // Known to the server, so that anything left unsynced afterwards comes from the completion.
        QVERIFY(data()->createTaskLocally(RecordBuilder::task()
                                              .withId("water")
                                              .repeating(period)
                                              .startingAt(march(1).addSecs(-3600))
                                              .dueAt(march(1))
                                              .fromServer()));
        const DOTask task = taskOnToday("water");

        QVERIFY(m_handler->markTaskAsCompleted(task));
        const DOTask copy = data()->getTaskById(m_handler->lastCreatedTaskId());
        QCOMPARE(copy.value("STATE").toInt(), COMPLETED_OBJECT_STATE);
        QCOMPARE(copy.value("PERIOD").toString(), QString());
        QCOMPARE(copy.value("START").toDateTime(),
                 task.value(task.contains("FAKESTART") ? "FAKESTART" : "START"));
        QCOMPARE(copy.value("DUE").toDateTime(), task.value(task.contains("FAKEDUE") ? "FAKEDUE" : "DUE"));
        const DOTask movedOn = data()->getTaskById("water");
        QCOMPARE(movedOn.value("STATE").toInt(), DEFAULT_OBJECT_STATE);
        QCOMPARE(movedOn.value("DUE").toDateTime(), nextDue);
        QVERIFY(syncPending());

        m_handler->revertTaskState(task);
        QVERIFY(data()->getTaskById(copy.value("ID").toString()).isEmpty());
        QCOMPARE(data()->getTaskById("water").value("DUE").toDateTime(), march(1));
        QCOMPARE(onApplicationDatabase("SELECT COUNT(*) FROM task WHERE synced = 0").toInt(), 0);
        QVERIFY(!syncPending());
        QVERIFY(m_handler->lastCreatedTaskId().isEmpty());
    }

    void multiDeleteConfirmedOnceCommitsAllAndConfirmsEach()
    {
        const QStringList ids{"a", "b", "c"};
        for (const QString& id : ids)
            QVERIFY(m_handler->createTask(RecordBuilder::task().withId(id)));
        QSignalSpy updated(m_handler, &TaskHandler::taskUpdated);
        for (const QString& id : ids)
            QVERIFY(m_handler->markTaskAsDeleted(data()->getTaskById(id), id == ids.last()));
        QCOMPARE(updated.size(), 1);

        for (const QString& id : ids)
            QVERIFY(m_handler->confirmTaskUpdate(data()->getTaskById(id)));

        QCOMPARE(onApplicationDatabase("SELECT COUNT(*) FROM task WHERE state = 1").toInt(), 3);
        QCOMPARE(updated.size(), 4);
        QVERIFY(!data()->hasPendingChanges());
    }

    void indicatorRequestsForOneMomentAreAnsweredNewestFirst()
    {
        QVERIFY(m_handler->createTask(RecordBuilder::task().dueAt(march(20))));
        QJSEngine engine;
        engine.evaluate("var answers = []; function answer(name) {"
                        "  return function(active, overdue, repeated) {"
                        "    answers.push([name, active, overdue, repeated].join()); } }");
        const QDateTime moment(QDate(2026, 3, 20), QTime(0, 0));
        QSignalSpy replies(data(), &DataManager::indicatorStateForDateChanged);

        m_handler->requestIndicatorStateForDate(moment, engine.evaluate("answer('first')"));
        m_handler->requestIndicatorStateForDate(moment, engine.evaluate("answer('second')"));

        QTRY_COMPARE(replies.size(), 2);
        QCOMPARE(engine.evaluate("answers.join(';')").toString(),
                 "second,true,false,false;first,true,false,false");
    }
};

NORVEL_TEST_MAIN(TaskHandlerTest)

#include "taskhandlertest.moc"

#include "store/calendarinfostore.h"
#include "core/clock.h"
#include "store/databasehandler.h"
#include "store/taskstore.h"
#include "testlib/recordbuilder.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

namespace {
QStringList sorted(QStringList ids)
{
    ids.sort();
    return ids;
}

QStringList sortedIds(const QList<DOTask>& tasks)
{
    QStringList ids;
    for (const DOTask& task : tasks)
        ids.append(task.value(QStringLiteral("ID")).toString());
    return sorted(ids);
}
} // namespace

class CalendarInfoStoreTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void exportedTasksAreTrackedThroughTheirChanges();

private:
    void addTask(const QString& id, int state = DEFAULT_OBJECT_STATE);
    void changeTask(const QString& id, int state);

    std::unique_ptr<TestDatabase> m_database;
    DatabaseHandler* m_handler = nullptr;
    CalendarInfoStore* m_calendar = nullptr;
};

void CalendarInfoStoreTest::init()
{
    Clock::pin(QDateTime(QDate(2026, 3, 10), QTime(14, 0)));
    m_database = std::make_unique<TestDatabase>();
    QVERIFY(m_database->isReady());
    m_handler = m_database->handler();
    m_calendar = m_handler->calendarInfo();
}

void CalendarInfoStoreTest::cleanup()
{
    m_database.reset();
    Clock::unpin();
}

void CalendarInfoStoreTest::addTask(const QString& id, int state)
{
    QVERIFY(m_handler->tasks()->createTaskLocally(RecordBuilder::task().withId(id).withState(state)));
    QVERIFY(m_handler->commitChanges());
}

void CalendarInfoStoreTest::changeTask(const QString& id, int state)
{
    DOTask task = m_handler->tasks()->getTaskById(id);
    task.insert(QStringLiteral("STATE"), state);
    QVERIFY(m_handler->tasks()->updateTaskLocally(task));
    QVERIFY(m_handler->commitChanges());
}

void CalendarInfoStoreTest::exportedTasksAreTrackedThroughTheirChanges()
{
    addTask("kept");
    addTask("dropped");
    addTask("o'clock");
    addTask("in-trash", DELETED_OBJECT_STATE);
    QCOMPARE(sortedIds(m_calendar->getCalendarTasksToCreate()), sorted({"dropped", "kept", "o'clock"}));

    QVERIFY(m_calendar->handleCalendarTaskCreated("kept"));
    QVERIFY(m_calendar->handleCalendarTaskCreated("dropped"));
    QVERIFY(m_calendar->handleCalendarTaskCreated("o'clock"));
    QVERIFY(m_calendar->getCalendarTasksToCreate().isEmpty());
    QCOMPARE(sorted(m_calendar->getCalendarTaskIds()), sorted({"dropped", "kept", "o'clock"}));
    QVERIFY(m_calendar->getCalendarTasksToUpdate().isEmpty());

    // Every stored change marks the export as out of date, until the calendar has it.
    changeTask("kept", COMPLETED_OBJECT_STATE);
    changeTask("o'clock", DEFAULT_OBJECT_STATE);
    changeTask("dropped", DELETED_OBJECT_STATE);
    QCOMPARE(sortedIds(m_calendar->getCalendarTasksToUpdate()), sorted({"kept", "o'clock"}));
    QCOMPARE(m_calendar->getCalendarTasksToDelete(), QStringList{"dropped"});
    QVERIFY(m_calendar->handleCalendarTaskUpdated("kept"));
    QVERIFY(m_calendar->handleCalendarTaskUpdated("o'clock"));
    QVERIFY(m_calendar->getCalendarTasksToUpdate().isEmpty());
    m_handler->beginTransaction();
    QVERIFY(m_handler->tasks()->updateTaskRemotely(RecordBuilder::task().withId("kept").fromServer()));
    QVERIFY(m_handler->commitChanges());
    QCOMPARE(sortedIds(m_calendar->getCalendarTasksToUpdate()), QStringList{"kept"});

    QVERIFY(m_calendar->markCalendarTasksToUpdate());
    QCOMPARE(sortedIds(m_calendar->getCalendarTasksToUpdate()), sorted({"kept", "o'clock"}));
    QCOMPARE(m_calendar->getCalendarTasksToDelete(), QStringList{"dropped"});

    // A deleted task keeps its row until the whole table is cleared.
    QVERIFY(m_calendar->clearCalendarInfoTable());
    QVERIFY(m_calendar->getCalendarTaskIds().isEmpty());
    QVERIFY(m_calendar->getCalendarTasksToDelete().isEmpty());
    QCOMPARE(sortedIds(m_calendar->getCalendarTasksToCreate()), sorted({"o'clock"}));
}

NORVEL_TEST_MAIN(CalendarInfoStoreTest)

#include "calendarinfostoretest.moc"

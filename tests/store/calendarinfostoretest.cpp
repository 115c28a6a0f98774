#include "store/calendarinfostore.h"
#include "core/clock.h"
#include "store/databasehandler.h"
#include "store/taskstore.h"
#include "testlib/recordbuilder.h"
#include "testlib/storehelpers.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

class CalendarInfoStoreTest : public QObject
{
    Q_OBJECT

    void setState(TaskStore* tasks, const QString& id, int state)
    {
        QVERIFY(tasks->updateTaskLocally(changed(tasks->getTaskById(id), {{"STATE", state}})));
    }

private slots:
    void exportedTasksAreTrackedThroughTheirChanges()
    {
        Clock::pin(QDateTime(QDate(2026, 3, 10), QTime(14, 0)));
        TestDatabase database;
        QVERIFY(database.isReady());
        DatabaseHandler* handler = database.handler();
        CalendarInfoStore* calendar = handler->calendarInfo();
        for (const QString id : {"kept", "o'clock", "dropped"})
            QVERIFY(handler->tasks()->createTaskLocally(RecordBuilder::task().withId(id)));
        QVERIFY(handler->tasks()->createTaskLocally(RecordBuilder::task().withId("in-trash").withState(1)));
        QVERIFY(handler->commitChanges());
        QCOMPARE(sortedIdsOf(calendar->getCalendarTasksToCreate()),
                 QStringList({"dropped", "kept", "o'clock"}));

        for (const QString id : {"kept", "o'clock", "dropped"})
            QVERIFY(calendar->handleCalendarTaskCreated(id));
        QVERIFY(calendar->getCalendarTasksToCreate().isEmpty());
        QCOMPARE(calendar->getCalendarTaskIds().size(), 3);
        QVERIFY(calendar->getCalendarTasksToUpdate().isEmpty());

        // Every stored change marks the export as out of date, until the calendar has it.
        setState(handler->tasks(), "kept", COMPLETED_OBJECT_STATE);
        setState(handler->tasks(), "o'clock", DEFAULT_OBJECT_STATE);
        setState(handler->tasks(), "dropped", DELETED_OBJECT_STATE);
        QVERIFY(handler->commitChanges());
        QCOMPARE(sortedIdsOf(calendar->getCalendarTasksToUpdate()), QStringList({"kept", "o'clock"}));
        QCOMPARE(calendar->getCalendarTasksToDelete(), QStringList{"dropped"});
        QVERIFY(calendar->handleCalendarTaskUpdated("kept"));
        QCOMPARE(sortedIdsOf(calendar->getCalendarTasksToUpdate()), QStringList{"o'clock"});
        QVERIFY(calendar->markCalendarTasksToUpdate());
        QCOMPARE(sortedIdsOf(calendar->getCalendarTasksToUpdate()), QStringList({"kept", "o'clock"}));

        // A deleted task keeps its row until the whole table is cleared.
        QCOMPARE(calendar->getCalendarTasksToDelete(), QStringList{"dropped"});
        QVERIFY(calendar->clearCalendarInfoTable());
        QVERIFY(calendar->getCalendarTaskIds().isEmpty());
        QVERIFY(calendar->getCalendarTasksToDelete().isEmpty());
        QCOMPARE(sortedIdsOf(calendar->getCalendarTasksToCreate()), QStringList{"o'clock"});
        Clock::unpin();
    }
};

NORVEL_TEST_MAIN(CalendarInfoStoreTest)

#include "calendarinfostoretest.moc"

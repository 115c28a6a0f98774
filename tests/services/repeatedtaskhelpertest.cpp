#include "services/repeatedtaskhelper.h"
#include "core/clock.h"
#include "store/databasehandler.h"
#include "store/taskstore.h"
#include "testlib/recordbuilder.h"
#include "testlib/storehelpers.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QSettings>
#include <QtTest>

using Dates = QSet<QDate>;

namespace {
const QString taskId = QStringLiteral("0d9a4c1e-6b7f-4e21-9c55-3f2a8b1d7e60");

QDateTime march(int day, int hour = 0, int minute = 0)
{
    return wallClock(QDate(2023, 3, day), QTime(hour, minute));
}

// Starts on its due day, so a read finds nothing to repair unless the weekday is off the list.
DOTask repeatingTask(const QString& period, const QDate& due)
{
    return RecordBuilder::task()
        .withId(taskId)
        .repeating(period)
        .startingAt(wallClock(due, QTime(9, 0)))
        .dueAt(wallClock(due, QTime(18, 0)));
}

// The dates within a year after the anchor that a plain rule or a sorted weekday list hits.
Dates expectedOccurrences(const QString& period, const QDate& anchor)
{
    const QStringList fields = period.split(QLatin1Char(';'));
    const int count = fields.at(1).toInt();
    const QDate anchorMonday = anchor.addDays(1 - anchor.dayOfWeek());
    Dates dates;
    for (QDate date = anchor; date <= anchor.addYears(1);) {
        if (fields.size() == 3) {
            const bool listed =
                fields.at(2).split(QLatin1Char(',')).contains(QString::number(date.dayOfWeek()));
            if (listed && anchorMonday.daysTo(date) / 7 % count == 0)
                dates.insert(date);
            date = date.addDays(1);
        } else if (fields.at(0) == QLatin1String("m")) {
            dates.insert(date);
            const int month = date.month() - 1 + count;
            const QDate first(date.year() + month / 12, month % 12 + 1, 1);
            date = first.addDays(qMin(date.day(), first.daysInMonth()) - 1);
        } else {
            dates.insert(date);
            date = date.addDays(fields.at(0) == QLatin1String("w") ? 7 * count : count);
        }
    }
    dates.remove(anchor);
    return dates;
}
} // namespace

class RepeatedTaskHelperTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<RepeatedTaskHelper> m_helper;

    DOTask store(const DOTask& task)
    {
        m_database->handler()->tasks()->createTaskLocally(task);
        m_database->handler()->commitChanges();
        return m_database->handler()->tasks()->getTaskById(taskId);
    }

private slots:
    void init()
    {
        Clock::pin(QDateTime(QDate(2023, 1, 2), QTime(12, 0)));
        m_database = std::make_unique<TestDatabase>();
        QVERIFY(m_database->isReady());
        m_helper = std::make_unique<RepeatedTaskHelper>(m_database->handler());
    }

    void cleanup()
    {
        m_helper.reset();
        m_database.reset();
        removeDataFiles();
        Clock::unpin();
    }

    void occurrencesOverAYear_data()
    {
        QTest::addColumn<QString>("period");
        QTest::addColumn<QDate>("anchor");
        QTest::addColumn<Dates>("expected");

        const QDate monday(2023, 3, 6), wednesday(2023, 3, 8);
        const auto plain = [](const char* period, const QDate& anchor) {
            QTest::addRow("%s from %s", period, qPrintable(anchor.toString(Qt::ISODate)))
                << period << anchor << expectedOccurrences(period, anchor);
        };
        for (const char* period : {"d;1", "d;3", "w;1", "w;3", "w;1;1,3,5", "w;3;3,4"})
            plain(period, monday.addDays(-5));
        plain("w;2;1,3", monday);
        plain("w;2;2,7", monday.addDays(1));
        for (const QDate& anchor : {QDate(2023, 1, 31), QDate(2024, 1, 29)})
            plain("m;1", anchor);
        plain("m;2", QDate(2023, 3, 31));
        QTest::newRow("unsorted 3,1 keeps to Wednesdays")
            << "w;1;3,1" << wednesday << expectedOccurrences(QStringLiteral("w;1;3"), wednesday);
        QTest::newRow("off-list Tuesday anchor") << "w;1;1" << monday.addDays(1) << Dates();
        QTest::newRow("repeated list entry ends after its first week")
            << "w;1;1,3,1" << monday << Dates{wednesday};
        QTest::newRow("weekday outside the week is ignored")
            << "w;1;1,9" << monday << expectedOccurrences(QStringLiteral("w;1;1"), monday);
        for (const char* period : {"d;0", "d;-2", "m;0", "w;-3", "w;0;3", "w;x;3", "m;2000000000", "w;1;9"})
            QTest::newRow(period) << period << wednesday << Dates();
    }

    void occurrencesOverAYear()
    {
        QFETCH(QString, period);
        QFETCH(QDate, anchor);
        const DOTask task = store(repeatingTask(period, anchor));

        Dates found;
        for (QDate date = anchor.addDays(-3); date <= anchor.addYears(1); date = date.addDays(1)) {
            if (!m_helper->getRepetitionTaskFromOriginalTask(task, date).isEmpty())
                found.insert(date);
        }
        QTEST(found, "expected");
    }

    void reminderWishesKeepEachTypeOnceAndDropEmptyKeys()
    {
        m_helper->setDueDateReminder(taskId, NotificationManager::FiveMinutes);
        m_helper->setDueDateReminder(taskId, NotificationManager::Hour);
        m_helper->setDueDateReminder(taskId, NotificationManager::FiveMinutes);
        m_helper->setStartDateReminder("other", NotificationManager::Day);

        QCOMPARE(m_helper->getDueDateReminders(taskId), (QVariantList{1, 4}));
        const QList<RepeatedReminder> all{{taskId, RepeatedReminder::Due, NotificationManager::FiveMinutes},
                                          {taskId, RepeatedReminder::Due, NotificationManager::Hour},
                                          {"other", RepeatedReminder::Start, NotificationManager::Day}};
        QCOMPARE(m_helper->getAllReminders(), all);

        m_helper->removeDueDateReminder(taskId, NotificationManager::FiveMinutes);
        m_helper->removeDueDateReminder(taskId, NotificationManager::Hour);
        QVERIFY(!QSettings(dataFilePath("repeated_tasks_reminders.dat"), QSettings::IniFormat)
                     .contains("due_" + taskId));
        QVERIFY(!m_helper->removeAllReminders(QString()));
        QVERIFY(m_helper->hasStartDateReminder("other", NotificationManager::Day));
        QVERIFY(m_helper->removeAllReminders("other"));
        QCOMPARE(m_helper->getAllReminders(), QList<RepeatedReminder>());
    }

    void repairGivesConsistentDates_data()
    {
        QTest::addColumn<QString>("period");
        QTest::addColumn<QDateTime>("start");
        QTest::addColumn<QDateTime>("due");
        QTest::addColumn<QString>("defaultStart");
        QTest::addColumn<QDateTime>("repairedStart");
        QTest::addColumn<QDateTime>("repairedDue");

        QTest::newRow("Saturday to Friday")
            << "w;1;5" << march(11, 9) << march(11, 18) << "" << march(17, 9) << march(17, 18);
        QTest::newRow("Friday wraps to Wednesday")
            << "w;1;1,3" << march(3, 9) << march(3, 18) << "" << march(8, 9) << march(8, 18);
        QTest::newRow("start keeps its time")
            << "d;1" << march(1, 9) << march(3, 18) << "" << march(3, 9) << march(3, 18);
        QTest::newRow("start time after due, default 8:00 after due")
            << "d;1" << march(1, 9) << march(3, 7) << "" << march(3) << march(3, 7);
        QTest::newRow("start time after due, default from settings")
            << "d;1" << march(1, 20) << march(3, 18) << "7:45" << march(3, 7, 45) << march(3, 18);
        QTest::newRow("no start, default 8:00")
            << "w;1" << QDateTime() << march(3, 18) << "" << march(3, 8) << march(3, 18);
        QTest::newRow("same day") << "d;2" << march(3, 20) << march(3, 18) << "" << march(3, 20)
                                  << march(3, 18);
        QTest::newRow("no real weekday listed")
            << "w;1;0,9" << march(3, 9) << march(3, 18) << "" << march(3, 9) << march(3, 18);
        QTest::newRow("monthly") << "m;1" << march(1, 9) << march(3, 18) << "" << march(1, 9) << march(3, 18);
    }

    void repairGivesConsistentDates()
    {
        QFETCH(QString, period);
        QFETCH(QDateTime, start);
        QFETCH(QDateTime, due);
        QFETCH(QString, defaultStart);
        if (!defaultStart.isEmpty())
            writeDataFile("settings.dat", "default_start_time", defaultStart);

        const DOTask repaired = RepeatedTaskHelper::repairTaskDates(
            RecordBuilder::task().repeating(period).startingAt(start).dueAt(due));

        QTEST(repaired.value("START").toDateTime(), "repairedStart");
        QTEST(repaired.value("DUE").toDateTime(), "repairedDue");
    }

    // Reads repair the stored row: the walk itself starts from the date it was given.
    void readingRepairsTheStoredRow()
    {
        const DOTask saturday = store(repeatingTask(QStringLiteral("w;1;5"), QDate(2023, 3, 11)));
        const DOTask undated = RecordBuilder::task().withId(QStringLiteral("undated")).repeating("d;1");
        m_database->handler()->tasks()->createTaskLocally(undated);
        m_database->handler()->commitChanges();

        QVERIFY(m_helper->getRepetitionTaskFromOriginalTask(saturday, QDate(2023, 3, 17)).isEmpty());
        QVERIFY(m_helper->getRepetitionTaskFromOriginalTask(undated, QDate(2023, 3, 17)).isEmpty());
        m_database->handler()->commitChanges();

        const DOTask repaired = m_database->handler()->tasks()->getTaskById(taskId);
        QCOMPARE(repaired.value("DUE").toDateTime(), march(17, 18));
        QVERIFY(!m_helper->getRepetitionTaskFromOriginalTask(repaired, QDate(2023, 3, 24)).isEmpty());
        QCOMPARE(m_database->handler()->tasks()->getTaskById("undated").value("PERIOD").toString(),
                 QString());
    }

    void dayListCarriesUndoneTaskOntoTodayOnly_data()
    {
        QTest::addColumn<QString>("period");
        QTest::addColumn<QDate>("date");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("keyPrefix");

        QTest::newRow("undone task carried onto today") << "m;1" << QDate(2023, 3, 10) << 1 << "FAKE";
        QTest::newRow("not carried onto tomorrow") << "m;1" << QDate(2023, 3, 11) << 0 << "";
        QTest::newRow("rule day after today") << "m;1" << QDate(2023, 4, 9) << 1 << "";
        QTest::newRow("one field is no rule") << "m" << QDate(2023, 3, 10) << 0 << "";
    }

    void dayListCarriesUndoneTaskOntoTodayOnly()
    {
        QFETCH(QString, period);
        QFETCH(QDate, date);
        QFETCH(int, count);
        QFETCH(QString, keyPrefix);
        Clock::pin(march(10, 12));
        store(RecordBuilder::task()
                  .withId(taskId)
                  .repeating(period)
                  .startingAt(march(7, 10))
                  .dueAt(march(9, 18)));

        const QList<DOTask> entries = m_helper->getRepeatedDayTasks(date);

        QCOMPARE(entries.size(), count);
        QCOMPARE(m_helper->getRepeatedDayTaskCount(date), count);
        QCOMPARE(m_helper->hasRepeatedTasks(date), count > 0);
        if (count == 0)
            return;
        const DOTask occurrence = entries.first();
        QCOMPARE(occurrence.value("REPEATED"), QVariant(true));
        // The occurrence keeps the distance from start to due.
        QCOMPARE(occurrence.value(keyPrefix + "DUE").toDateTime(), wallClock(date, QTime(18, 0)));
        QCOMPARE(occurrence.value(keyPrefix + "START").toDateTime(),
                 wallClock(date.addDays(-2), QTime(10, 0)));
        if (!keyPrefix.isEmpty())
            QCOMPARE(occurrence.value("START").toDateTime(), march(7, 10));
    }

    // Reading the same day again answers from the last read only while the row, today and the
    // default start time are what they were.
    void dayEntriesFollowChangesOfTheRowAndOfToday()
    {
        Clock::pin(march(10, 12));
        DOTask task = store(RecordBuilder::task()
                                .withId(taskId)
                                .repeating("m;1")
                                .startingAt(march(9, 10))
                                .dueAt(march(9, 18)));
        QCOMPARE(m_helper->getRepeatedDayTasks(QDate(2023, 3, 10)).size(), 1);

        task.insert("NAME", "Renamed");
        m_database->handler()->tasks()->updateTaskLocally(task);
        m_database->handler()->commitChanges();
        const QList<DOTask> renamed = m_helper->getRepeatedDayTasks(QDate(2023, 3, 10));
        QCOMPARE(renamed.size(), 1);
        QCOMPARE(renamed.first().value("NAME").toString(), QStringLiteral("Renamed"));

        // From the next day on, the tenth is a past day the rule does not hit.
        Clock::pin(march(11, 12));
        QVERIFY(m_helper->getRepeatedDayTasks(QDate(2023, 3, 10)).isEmpty());
    }
};

NORVEL_TEST_MAIN(RepeatedTaskHelperTest)
#include "repeatedtaskhelpertest.moc"

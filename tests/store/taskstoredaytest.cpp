#include "core/clock.h"
#include "store/databasehandler.h"
#include "store/projectstore.h"
#include "store/taskstore.h"
#include "testlib/recordbuilder.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QSettings>
#include <QStandardPaths>
#include <QtTest>

#include <optional>

namespace {
const QDate today(2026, 3, 10);
const QDate pastDay(2026, 3, 3);
const QDate futureDay(2026, 3, 17);
const QDateTime middleOfToday(today, QTime(14, 0));
const int hour = 60;
const int day = 24 * hour;

QString settingsFilePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
           QStringLiteral("/settings.dat");
}

void writeSetting(const QString& key, const QVariant& value)
{
    QSettings settings(settingsFilePath(), QSettings::IniFormat);
    settings.setValue(key, value);
    settings.sync();
}

QStringList idsOf(const QList<DataObject>& objects)
{
    QStringList ids;
    for (const DataObject& object : objects)
        ids.append(object.value(QStringLiteral("ID")).toString());
    return ids;
}

QDateTime minutesAfterMidnight(const QDate& date, std::optional<int> minutes)
{
    if (!minutes)
        return QDateTime();
    return wallClock(date).addSecs(*minutes * 60);
}

struct DayRuleRow
{
    const char* name;
    int state;
    std::optional<int> start; // minutes from the day's midnight
    std::optional<int> due;
    const char* period;
    bool today;
    bool pastDay;
    bool futureDay;
};

// One line per kind of task: whether the daily plan of today, of a past day and of a future day lists it.
const DayRuleRow dayRules[] = {
    {"active, due before the day", 0, {}, -day + 12 * hour, "", true, false, false},
    {"active, due before the day, repeating", 0, {}, -day + 12 * hour, "d;1", false, false, false},
    {"active, due inside the day", 0, {}, 10 * hour, "", true, true, true},
    {"completed, due inside the day", 2, {}, 10 * hour, "", true, true, true},
    {"active, start after due inside the day", 0, 20 * hour, 10 * hour, "", true, true, true},
    {"active, due after the day, no start", 0, {}, 2 * day, "", true, false, true},
    {"active, due after the day, start before its end", 0, 23 * hour + 59, 2 * day, "", true, false, true},
    {"active, due after the day, start at its end", 0, day, 2 * day, "", false, false, false},
    {"active, no due date, start before the day's end", 0, -day, {}, "", true, false, true},
    {"active, no dates", 0, {}, {}, "", false, false, false},
    {"completed, due before the day", 2, {}, -day + 10 * hour, "", false, false, false},
    {"completed, due after the day", 2, {}, 2 * day, "", false, false, false},
    {"deleted, due inside the day", 1, {}, 10 * hour, "", false, false, false},
    {"completed and deleted, due inside the day", 3, {}, 10 * hour, "", false, false, false},
};
} // namespace

class TaskStoreDayTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void dayListFollowsTheDayRules_data();
    void dayListFollowsTheDayRules();
    void taskDueAtMidnightBelongsToTheDayThatStarts_data();
    void taskDueAtMidnightBelongsToTheDayThatStarts();
    void dayAcrossDaylightSavingChangeRunsFromMidnightToMidnight_data();
    void dayAcrossDaylightSavingChangeRunsFromMidnightToMidnight();
    void datedProjectsJoinTheDayByTheSetting_data();
    void datedProjectsJoinTheDayByTheSetting();
    void invalidDateHasNoTasks();
    void dayCountsSplitAtTheMoment_data();
    void dayCountsSplitAtTheMoment();
    void projectOverdueCountUsesThePresentMoment();
    void overdueFlagCountsRepeatingTasks_data();
    void overdueFlagCountsRepeatingTasks();

private:
    QString addTask(const QVariantMap& task);

    std::unique_ptr<TestDatabase> m_database;
    TaskStore* m_tasks = nullptr;
};

void TaskStoreDayTest::init()
{
    Clock::pin(middleOfToday);
    m_database = std::make_unique<TestDatabase>();
    QVERIFY(m_database->isReady());
    m_tasks = m_database->handler()->tasks();
}

void TaskStoreDayTest::cleanup()
{
    m_database.reset();
    QFile::remove(settingsFilePath());
    Clock::unpin();
}

QString TaskStoreDayTest::addTask(const QVariantMap& task)
{
    if (!m_tasks->createTaskLocally(task))
        return QString();
    const QString id = m_database->handler()->lastCreatedObjectId();
    m_database->handler()->commitChanges();
    return id;
}

void TaskStoreDayTest::dayListFollowsTheDayRules_data()
{
    QTest::addColumn<QDate>("day");
    QTest::addColumn<QVariantMap>("task");
    QTest::addColumn<bool>("listed");

    const QList<QPair<const char*, QDate>> days = {
        {"today", today}, {"past day", pastDay}, {"future day", futureDay}};
    for (const DayRuleRow& rule : dayRules) {
        const bool listedOn[] = {rule.today, rule.pastDay, rule.futureDay};
        for (int i = 0; i < days.size(); ++i) {
            const QDate date = days.at(i).second;
            const QVariantMap task = RecordBuilder::task()
                                         .withState(rule.state)
                                         .startingAt(minutesAfterMidnight(date, rule.start))
                                         .dueAt(minutesAfterMidnight(date, rule.due))
                                         .repeating(QString::fromLatin1(rule.period));
            QTest::addRow("%s, %s", rule.name, days.at(i).first) << date << task << listedOn[i];
        }
    }
}

void TaskStoreDayTest::dayListFollowsTheDayRules()
{
    QFETCH(QDate, day);
    QFETCH(QVariantMap, task);
    QFETCH(bool, listed);

    const QString id = addTask(task);
    QVERIFY(!id.isEmpty());

    QCOMPARE(idsOf(m_tasks->getDayTasks(day)).contains(id), listed);
}

void TaskStoreDayTest::taskDueAtMidnightBelongsToTheDayThatStarts_data()
{
    QTest::addColumn<QDate>("day");
    QTest::addColumn<QDateTime>("due");
    QTest::addColumn<bool>("listed");

    // Completed tasks, so that only the due date decides on every kind of day.
    const QList<QPair<const char*, QDate>> days = {
        {"today", today}, {"past day", pastDay}, {"future day", futureDay}};
    for (const auto& namedDay : days) {
        QTest::addRow("%s, at its own midnight", namedDay.first)
            << namedDay.second << wallClock(namedDay.second) << true;
        QTest::addRow("%s, at the next midnight", namedDay.first)
            << namedDay.second << wallClock(namedDay.second.addDays(1)) << false;
    }
}

void TaskStoreDayTest::taskDueAtMidnightBelongsToTheDayThatStarts()
{
    QFETCH(QDate, day);
    QFETCH(QDateTime, due);
    QFETCH(bool, listed);

    const QString id = addTask(RecordBuilder::task().withState(COMPLETED_OBJECT_STATE).dueAt(due));

    QCOMPARE(idsOf(m_tasks->getDayTasks(day)).contains(id), listed);
}

void TaskStoreDayTest::dayAcrossDaylightSavingChangeRunsFromMidnightToMidnight_data()
{
    QTest::addColumn<QDate>("day");
    QTest::newRow("clocks go forward") << QDate(2026, 3, 29);
    QTest::newRow("clocks go back") << QDate(2026, 10, 25);
}

void TaskStoreDayTest::dayAcrossDaylightSavingChangeRunsFromMidnightToMidnight()
{
    QFETCH(QDate, day);
    // Half past midnight local time is still the previous day in UTC.
    Clock::pin(QDateTime(day, QTime(0, 30)));
    const auto completedDue = [](const QDateTime& due) {
        return RecordBuilder::task().withState(COMPLETED_OBJECT_STATE).dueAt(due);
    };
    const QString overdue = addTask(RecordBuilder::task().dueAt(wallClock(day.addDays(-3), QTime(9, 0))));
    const QString inChangedHour = addTask(completedDue(wallClock(day, QTime(2, 30))));
    const QString lastMinute = addTask(completedDue(wallClock(day, QTime(23, 59))));
    addTask(completedDue(wallClock(day.addDays(-1), QTime(23, 59))));
    addTask(completedDue(wallClock(day.addDays(1))));

    const QStringList listed = idsOf(m_tasks->getDayTasks(day));

    QCOMPARE(listed.size(), 3);
    QVERIFY(listed.contains(overdue)); // only today's plan lists overdue tasks
    QVERIFY(listed.contains(inChangedHour));
    QVERIFY(listed.contains(lastMinute));
}

void TaskStoreDayTest::datedProjectsJoinTheDayByTheSetting_data()
{
    QTest::addColumn<QVariant>("setting");
    QTest::addColumn<bool>("shown");

    QTest::newRow("not set") << QVariant() << true;
    QTest::newRow("on") << QVariant(true) << true;
    QTest::newRow("off") << QVariant(false) << false;
}

void TaskStoreDayTest::datedProjectsJoinTheDayByTheSetting()
{
    QFETCH(QVariant, setting);
    QFETCH(bool, shown);

    if (setting.isValid())
        writeSetting(QStringLiteral("show_projects_in_daily_plan"), setting);
    const QString taskId = addTask(RecordBuilder::task().dueAt(wallClock(futureDay, QTime(10, 0))));
    QVERIFY(m_database->handler()->projects()->createProjectLocally(
        RecordBuilder::project().dueAt(wallClock(futureDay, QTime(12, 0)))));
    const QString projectId = m_database->handler()->lastCreatedObjectId();
    m_database->handler()->commitChanges();

    const QStringList listed = idsOf(m_tasks->getDayTasks(futureDay));
    QCOMPARE(listed.first(), taskId);
    QCOMPARE(listed.contains(projectId), shown);

    // With the task completed only the project can make the day active.
    DOTask completed = m_tasks->getTaskById(taskId);
    completed.insert(QStringLiteral("STATE"), COMPLETED_OBJECT_STATE);
    QVERIFY(m_tasks->updateTaskLocally(completed));
    QCOMPARE(m_tasks->hasActiveObjects(QDateTime(futureDay, QTime(8, 0))), shown);
}

void TaskStoreDayTest::invalidDateHasNoTasks()
{
    addTask(RecordBuilder::task().dueAt(wallClock(today, QTime(10, 0))));

    QVERIFY(m_tasks->getDayTasks(QDate()).isEmpty());
}

void TaskStoreDayTest::dayCountsSplitAtTheMoment_data()
{
    QTest::addColumn<QDateTime>("moment");
    QTest::addColumn<QVariantMap>("task");
    QTest::addColumn<int>("stillToCome");
    QTest::addColumn<int>("overdue");

    const auto dueToday = [](const QTime& time) {
        return RecordBuilder::task().dueAt(wallClock(today, time));
    };
    QTest::newRow("due later today") << middleOfToday << dueToday(QTime(18, 0)).build() << 1 << 0;
    QTest::newRow("due right now") << middleOfToday << dueToday(QTime(14, 0)).build() << 1 << 0;
    QTest::newRow("due earlier today") << middleOfToday << dueToday(QTime(10, 0)).build() << 0 << 1;
    QTest::newRow("completed, due later today")
        << middleOfToday << dueToday(QTime(18, 0)).withState(COMPLETED_OBJECT_STATE).build() << 0 << 0;
    QTest::newRow("completed, due earlier today")
        << middleOfToday << dueToday(QTime(10, 0)).withState(COMPLETED_OBJECT_STATE).build() << 0 << 0;
    QTest::newRow("due yesterday") << middleOfToday
                                   << RecordBuilder::task().dueAt(wallClock(today.addDays(-1))).build() << 0
                                   << 1;
    QTest::newRow("due yesterday, repeating")
        << middleOfToday << RecordBuilder::task().dueAt(wallClock(today.addDays(-1))).repeating("d;1").build()
        << 0 << 0;
    QTest::newRow("due tomorrow") << middleOfToday
                                  << RecordBuilder::task().dueAt(wallClock(today.addDays(1))).build() << 0
                                  << 0;
    QTest::newRow("started, no due date")
        << middleOfToday << RecordBuilder::task().startingAt(wallClock(today.addDays(-1))).build() << 0 << 0;

    // The local clock reads as wall-clock time on days whose UTC offset changes.
    const QDate springForward(2026, 3, 29);
    const QDate fallBack(2026, 10, 25);
    QTest::newRow("spring forward, due in a quarter of an hour")
        << QDateTime(springForward, QTime(23, 30))
        << RecordBuilder::task().dueAt(wallClock(springForward, QTime(23, 45))).build() << 1 << 0;
    QTest::newRow("spring forward, due a quarter of an hour ago")
        << QDateTime(springForward, QTime(23, 30))
        << RecordBuilder::task().dueAt(wallClock(springForward, QTime(23, 15))).build() << 0 << 1;
    QTest::newRow("fall back, due in a quarter of an hour")
        << QDateTime(fallBack, QTime(23, 30))
        << RecordBuilder::task().dueAt(wallClock(fallBack, QTime(23, 45))).build() << 1 << 0;
}

void TaskStoreDayTest::dayCountsSplitAtTheMoment()
{
    QFETCH(QDateTime, moment);
    QFETCH(QVariantMap, task);
    QFETCH(int, stillToCome);
    QFETCH(int, overdue);

    Clock::pin(moment);
    QVERIFY(!addTask(task).isEmpty());

    QCOMPARE(m_tasks->getActiveDayTaskCount(Clock::currentDateTime()), stillToCome);
    QCOMPARE(m_tasks->getOverdueDayTaskCount(Clock::currentDateTime()), overdue);
}

void TaskStoreDayTest::projectOverdueCountUsesThePresentMoment()
{
    const QString projectId = QStringLiteral("5d0c2a6e-8a44-4f0e-9c55-2f1d6b8e7a10");
    const QDateTime yesterday = wallClock(today.addDays(-1), QTime(9, 0));
    const auto inProject = [&projectId]() { return RecordBuilder::task().inParent(projectId); };
    addTask(inProject().dueAt(yesterday));
    addTask(inProject().dueAt(wallClock(today, QTime(13, 59))));
    addTask(inProject().dueAt(wallClock(today, QTime(14, 1))));
    addTask(inProject().dueAt(yesterday).withState(COMPLETED_OBJECT_STATE));
    addTask(inProject().dueAt(yesterday).withState(DELETED_OBJECT_STATE));
    addTask(inProject());
    addTask(RecordBuilder::task().dueAt(yesterday));

    QCOMPARE(m_tasks->getProjectOverdueTaskCount(projectId), 2);
}

void TaskStoreDayTest::overdueFlagCountsRepeatingTasks_data()
{
    QTest::addColumn<QVariantMap>("task");
    QTest::addColumn<bool>("overdue");

    const QDateTime yesterday = wallClock(today.addDays(-1), QTime(9, 0));
    QTest::newRow("repeating, due yesterday")
        << RecordBuilder::task().dueAt(yesterday).repeating("w;1").build() << true;
    QTest::newRow("due yesterday") << RecordBuilder::task().dueAt(yesterday).build() << true;
    QTest::newRow("due earlier today")
        << RecordBuilder::task().dueAt(wallClock(today, QTime(9, 0))).build() << false;
    QTest::newRow("completed, due yesterday")
        << RecordBuilder::task().dueAt(yesterday).withState(COMPLETED_OBJECT_STATE).build() << false;
    QTest::newRow("deleted, due yesterday")
        << RecordBuilder::task().dueAt(yesterday).withState(DELETED_OBJECT_STATE).build() << false;
    QTest::newRow("no due date") << RecordBuilder::task().startingAt(yesterday).build() << false;
}

void TaskStoreDayTest::overdueFlagCountsRepeatingTasks()
{
    QFETCH(QVariantMap, task);
    QFETCH(bool, overdue);

    QVERIFY(!addTask(task).isEmpty());

    QCOMPARE(m_tasks->hasOverdueTasks(middleOfToday), overdue);
}

NORVEL_TEST_MAIN(TaskStoreDayTest)

#include "taskstoredaytest.moc"

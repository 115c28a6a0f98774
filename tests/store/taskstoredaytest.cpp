#include "core/clock.h"
#include "store/databasehandler.h"
#include "store/projectstore.h"
#include "store/taskstore.h"
#include "testlib/recordbuilder.h"
#include "testlib/storehelpers.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

#include <optional>

namespace {
const QDate today(2026, 3, 10);
const QDate springForward(2026, 3, 29);
const QDate fallBack(2026, 10, 25);
const int hour = 60;
const int day = 24 * hour;

// Local times are made when needed: constants are made before the test time zone is set.
QDateTime middleOfToday()
{
    return QDateTime(today, QTime(14, 0));
}

QDateTime afterMidnight(const QDate& date, std::optional<int> minutes)
{
    return minutes ? wallClock(date).addSecs(*minutes * 60) : QDateTime();
}

struct DayRule
{
    const char* name;
    int state;
    std::optional<int> start; // minutes from the day's midnight
    std::optional<int> due;
    const char* period;
    bool today, pastDay, futureDay; // listed in the plan of such a day
};

const DayRule dayRules[] = {
    {"active, due before the day", 0, {}, -day + 12 * hour, "", true, false, false},
    {"active, due before the day, repeating", 0, {}, -day + 12 * hour, "d;1", false, false, false},
    {"active, due inside the day", 0, {}, 10 * hour, "", true, true, true},
    {"completed, due inside the day", 2, {}, 10 * hour, "", true, true, true},
    {"completed, due at the day's midnight", 2, {}, 0, "", true, true, true},
    {"completed, due at the next midnight", 2, {}, day, "", false, false, false},
    {"active, start after due inside the day", 0, 20 * hour, 10 * hour, "", true, true, true},
    {"active, due after the day, no start", 0, {}, 2 * day, "", true, false, true},
    {"active, due after the day, start before its end", 0, day - 1, 2 * day, "", true, false, true},
    {"active, due after the day, start at its end", 0, day, 2 * day, "", false, false, false},
    {"active, no due date, start before the day's end", 0, -day, {}, "", true, false, true},
    {"active, no dates", 0, {}, {}, "", false, false, false},
    {"completed, due before the day", 2, {}, -day + 10 * hour, "", false, false, false},
    {"deleted, due inside the day", 1, {}, 10 * hour, "", false, false, false},
    {"completed and deleted, due inside the day", 3, {}, 10 * hour, "", false, false, false},
};

RecordBuilder dueAt(const QDate& date, int minutes, int state = DEFAULT_OBJECT_STATE)
{
    return RecordBuilder::task().withState(state).dueAt(afterMidnight(date, minutes));
}
} // namespace

class TaskStoreDayTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestDatabase> m_database;
    TaskStore* m_tasks = nullptr;

    QString addTask(const QVariantMap& task)
    {
        const bool created = m_tasks->createTaskLocally(task);
        m_database->handler()->commitChanges();
        return created ? m_database->handler()->lastCreatedObjectId() : QString();
    }

    QString addProject(const QVariantMap& project)
    {
        const bool created = m_database->handler()->projects()->createProjectLocally(project);
        m_database->handler()->commitChanges();
        return created ? m_database->handler()->lastCreatedObjectId() : QString();
    }

private slots:
    void init()
    {
        Clock::pin(middleOfToday());
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

    void dayListFollowsTheDayRules_data()
    {
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QVariantMap>("task");
        QTest::addColumn<bool>("listed");

        const QDate days[] = {today, today.addDays(-7), today.addDays(7)};
        const char* dayNames[] = {"today", "past day", "future day"};
        for (const DayRule& rule : dayRules) {
            const bool listedOn[] = {rule.today, rule.pastDay, rule.futureDay};
            for (int i = 0; i < 3; ++i) {
                const QVariantMap task = RecordBuilder::task()
                                             .withState(rule.state)
                                             .startingAt(afterMidnight(days[i], rule.start))
                                             .dueAt(afterMidnight(days[i], rule.due))
                                             .repeating(QString::fromLatin1(rule.period));
                QTest::addRow("%s, %s", rule.name, dayNames[i])
                    << middleOfToday() << days[i] << task << listedOn[i];
                // Projects follow the same rules; they have no repeat rule to leave them out of today.
                if (*rule.period == '\0') {
                    const QVariantMap project = RecordBuilder::project()
                                                    .withState(rule.state)
                                                    .startingAt(afterMidnight(days[i], rule.start))
                                                    .dueAt(afterMidnight(days[i], rule.due));
                    QTest::addRow("project %s, %s", rule.name, dayNames[i])
                        << middleOfToday() << days[i] << project << listedOn[i];
                }
            }
        }
        // Half past midnight local time is still the previous day in UTC; the plan is today's all the same.
        for (const QDate& date : {springForward, fallBack}) {
            const QDateTime now(date, QTime(0, 30));
            const QByteArray name = date.toString(Qt::ISODate).toLatin1();
            QTest::addRow("%s, overdue", name.data()) << now << date << dueAt(date, -3 * day).build() << true;
            QTest::addRow("%s, due at the last minute", name.data())
                << now << date << dueAt(date, day - 1, 2).build() << true;
            QTest::addRow("%s, due at the next midnight", name.data())
                << now << date << dueAt(date, day, 2).build() << false;
        }
    }

    void dayListFollowsTheDayRules()
    {
        QFETCH(QDateTime, now);
        QFETCH(QDate, day);
        QFETCH(QVariantMap, task);
        Clock::pin(now);

        const bool isProject = task.contains(QStringLiteral("FOLDER"));
        const QString id = isProject ? addProject(task) : addTask(task);

        QVERIFY(!id.isEmpty());
        QTEST(idsOf(m_tasks->getDayTasks(day)).contains(id), "listed");
    }

    void datedProjectsJoinTheDayByTheSetting_data()
    {
        QTest::addColumn<QVariant>("setting");
        QTest::addColumn<bool>("shown");
        QTest::newRow("not set") << QVariant() << true;
        QTest::newRow("on") << QVariant(true) << true;
        QTest::newRow("off") << QVariant(false) << false;
    }

    void datedProjectsJoinTheDayByTheSetting()
    {
        QFETCH(QVariant, setting);
        if (setting.isValid())
            writeDataFile("settings.dat", "show_projects_in_daily_plan", setting);
        const QDate futureDay = today.addDays(7);
        const QString taskId = addTask(dueAt(futureDay, 10 * hour, COMPLETED_OBJECT_STATE));
        QVERIFY(m_database->handler()->projects()->createProjectLocally(
            RecordBuilder::project().dueAt(afterMidnight(futureDay, 12 * hour))));
        const QString projectId = m_database->handler()->lastCreatedObjectId();

        const QStringList listed = idsOf(m_tasks->getDayTasks(futureDay));

        QCOMPARE(listed.first(), taskId);
        QTEST(listed.contains(projectId), "shown");
        // The completed task does not make the day active; only the project can.
        QTEST(m_tasks->hasActiveObjects(QDateTime(futureDay, QTime(8, 0))), "shown");
    }

    void dayCountsSplitAtTheMoment_data()
    {
        QTest::addColumn<QDateTime>("moment");
        QTest::addColumn<QVariantMap>("task");
        QTest::addColumn<int>("stillToCome");
        QTest::addColumn<int>("overdue");
        QTest::addColumn<bool>("overdueFlag");

        const QDateTime now = middleOfToday();
        const QDate yesterday = today.addDays(-1);
        QTest::newRow("due later today") << now << dueAt(today, 18 * hour).build() << 1 << 0 << false;
        QTest::newRow("due right now") << now << dueAt(today, 14 * hour).build() << 1 << 0 << false;
        QTest::newRow("due earlier today") << now << dueAt(today, 10 * hour).build() << 0 << 1 << false;
        QTest::newRow("due yesterday") << now << dueAt(yesterday, 9 * hour).build() << 0 << 1 << true;
        QTest::newRow("due yesterday, repeating")
            << now << dueAt(yesterday, 9 * hour).repeating("w;1").build() << 0 << 0 << true;
        // The local clock reads as wall-clock time on days whose UTC offset changes.
        QTest::newRow("spring forward, due 15 minutes ago")
            << QDateTime(springForward, QTime(23, 30)) << dueAt(springForward, day - 45).build() << 0 << 1
            << false;
        QTest::newRow("fall back, due in 15 minutes")
            << QDateTime(fallBack, QTime(23, 30)) << dueAt(fallBack, day - 15).build() << 1 << 0 << false;
    }

    void dayCountsSplitAtTheMoment()
    {
        QFETCH(QDateTime, moment);
        QFETCH(QVariantMap, task);
        Clock::pin(moment);
        QVERIFY(!addTask(task).isEmpty());

        QTEST(m_tasks->getActiveDayTaskCount(moment), "stillToCome");
        QTEST(m_tasks->getOverdueDayTaskCount(moment), "overdue");
        QTEST(m_tasks->hasOverdueTasks(moment), "overdueFlag");
    }

    void projectOverdueCountUsesThePresentMoment()
    {
        const QString project = QStringLiteral("5d0c2a6e-8a44-4f0e-9c55-2f1d6b8e7a10");
        const QDate yesterday = today.addDays(-1);
        // Overdue: yesterday and 13:59; not: 14:01, undated, completed, deleted, another project's.
        for (const int minutes : {9 * hour, day + 14 * hour - 1, day + 14 * hour + 1})
            addTask(dueAt(yesterday, minutes).inParent(project));
        addTask(RecordBuilder::task().inParent(project));
        for (const int state : {COMPLETED_OBJECT_STATE, DELETED_OBJECT_STATE})
            addTask(dueAt(yesterday, 9 * hour, state).inParent(project));
        addTask(dueAt(yesterday, 9 * hour));

        QCOMPARE(m_tasks->getProjectOverdueTaskCount(project), 2);
    }
};

NORVEL_TEST_MAIN(TaskStoreDayTest)

#include "taskstoredaytest.moc"

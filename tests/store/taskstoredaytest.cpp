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
const QDate springForward(2026, 3, 29);
const QDate fallBack(2026, 10, 25);
const int hour = 60;
const int day = 24 * hour;

// Local times are made when needed: constants are made before the test time zone is set.
QDateTime middleOfToday()
{
    return QDateTime(today, QTime(14, 0));
}

QString settingsFilePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
           QStringLiteral("/settings.dat");
}

QStringList idsOf(const QList<DataObject>& objects)
{
    QStringList ids;
    for (const DataObject& object : objects)
        ids.append(object.value(QStringLiteral("ID")).toString());
    return ids;
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
    void datedProjectsJoinTheDayByTheSetting_data();
    void datedProjectsJoinTheDayByTheSetting();
    void dayCountsSplitAtTheMoment_data();
    void dayCountsSplitAtTheMoment();
    void projectOverdueCountUsesThePresentMoment();

private:
    QString addTask(const QVariantMap& task);

    std::unique_ptr<TestDatabase> m_database;
    TaskStore* m_tasks = nullptr;
};

void TaskStoreDayTest::init()
{
    Clock::pin(middleOfToday());
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
        }
    }
    // Half past midnight local time is still the previous day in UTC; the plan is today's all the same.
    for (const QDate& date : {springForward, fallBack}) {
        const QDateTime now(date, QTime(0, 30));
        const QString name = date.toString(Qt::ISODate);
        QTest::addRow("%s, overdue", qPrintable(name))
            << now << date << RecordBuilder::task().dueAt(afterMidnight(date, -3 * day)).build() << true;
        QTest::addRow("%s, due in the shifted hour", qPrintable(name))
            << now << date << RecordBuilder::task().withState(2).dueAt(afterMidnight(date, 150)).build()
            << true;
        QTest::addRow("%s, due at the last minute", qPrintable(name))
            << now << date << RecordBuilder::task().withState(2).dueAt(afterMidnight(date, day - 1)).build()
            << true;
        QTest::addRow("%s, due at the next midnight", qPrintable(name))
            << now << date << RecordBuilder::task().withState(2).dueAt(afterMidnight(date, day)).build()
            << false;
    }
}

void TaskStoreDayTest::dayListFollowsTheDayRules()
{
    QFETCH(QDateTime, now);
    QFETCH(QDate, day);
    QFETCH(QVariantMap, task);
    QFETCH(bool, listed);
    Clock::pin(now);

    const QString id = addTask(task);
    QVERIFY(!id.isEmpty());

    QCOMPARE(idsOf(m_tasks->getDayTasks(day)).contains(id), listed);
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
        QSettings(settingsFilePath(), QSettings::IniFormat).setValue("show_projects_in_daily_plan", setting);
    const QDate futureDay = today.addDays(7);
    const QString taskId =
        addTask(RecordBuilder::task().withState(2).dueAt(wallClock(futureDay, QTime(10, 0))));
    QVERIFY(m_database->handler()->projects()->createProjectLocally(
        RecordBuilder::project().dueAt(wallClock(futureDay, QTime(12, 0)))));
    const QString projectId = m_database->handler()->lastCreatedObjectId();

    const QStringList listed = idsOf(m_tasks->getDayTasks(futureDay));

    QCOMPARE(listed.first(), taskId);
    QCOMPARE(listed.contains(projectId), shown);
    // The completed task does not make the day active; only the project can.
    QCOMPARE(m_tasks->hasActiveObjects(QDateTime(futureDay, QTime(8, 0))), shown);
}

void TaskStoreDayTest::dayCountsSplitAtTheMoment_data()
{
    QTest::addColumn<QDateTime>("moment");
    QTest::addColumn<QVariantMap>("task");
    QTest::addColumn<int>("stillToCome");
    QTest::addColumn<int>("overdue");
    QTest::addColumn<bool>("overdueFlag");

    const auto due = [](const QDate& date, const QTime& time) {
        return RecordBuilder::task().dueAt(wallClock(date, time));
    };
    const QDateTime now = middleOfToday();
    const QDate yesterday = today.addDays(-1);
    QTest::newRow("due later today") << now << due(today, QTime(18, 0)).build() << 1 << 0 << false;
    QTest::newRow("due right now") << now << due(today, QTime(14, 0)).build() << 1 << 0 << false;
    QTest::newRow("due earlier today") << now << due(today, QTime(10, 0)).build() << 0 << 1 << false;
    QTest::newRow("completed, due later today")
        << now << due(today, QTime(18, 0)).withState(2).build() << 0 << 0 << false;
    QTest::newRow("completed, due earlier today")
        << now << due(today, QTime(10, 0)).withState(2).build() << 0 << 0 << false;
    QTest::newRow("due yesterday") << now << due(yesterday, QTime(9, 0)).build() << 0 << 1 << true;
    QTest::newRow("due yesterday, repeating")
        << now << due(yesterday, QTime(9, 0)).repeating("w;1").build() << 0 << 0 << true;
    QTest::newRow("deleted, due yesterday")
        << now << due(yesterday, QTime(9, 0)).withState(1).build() << 0 << 0 << false;
    QTest::newRow("due tomorrow") << now << due(today.addDays(1), QTime(9, 0)).build() << 0 << 0 << false;
    QTest::newRow("started, no due date")
        << now << RecordBuilder::task().startingAt(wallClock(yesterday)).build() << 0 << 0 << false;
    // The local clock reads as wall-clock time on days whose UTC offset changes.
    QTest::newRow("spring forward, due in 15 minutes")
        << QDateTime(springForward, QTime(23, 30)) << due(springForward, QTime(23, 45)).build() << 1 << 0
        << false;
    QTest::newRow("spring forward, due 15 minutes ago")
        << QDateTime(springForward, QTime(23, 30)) << due(springForward, QTime(23, 15)).build() << 0 << 1
        << false;
    QTest::newRow("fall back, due in 15 minutes")
        << QDateTime(fallBack, QTime(23, 30)) << due(fallBack, QTime(23, 45)).build() << 1 << 0 << false;
}

void TaskStoreDayTest::dayCountsSplitAtTheMoment()
{
    QFETCH(QDateTime, moment);
    QFETCH(QVariantMap, task);
    QFETCH(int, stillToCome);
    QFETCH(int, overdue);
    QFETCH(bool, overdueFlag);
    Clock::pin(moment);
    QVERIFY(!addTask(task).isEmpty());

    QCOMPARE(m_tasks->getActiveDayTaskCount(moment), stillToCome);
    QCOMPARE(m_tasks->getOverdueDayTaskCount(moment), overdue);
    QCOMPARE(m_tasks->hasOverdueTasks(moment), overdueFlag);
}

void TaskStoreDayTest::projectOverdueCountUsesThePresentMoment()
{
    const QString project = QStringLiteral("5d0c2a6e-8a44-4f0e-9c55-2f1d6b8e7a10");
    const QDateTime yesterday = wallClock(today.addDays(-1), QTime(9, 0));
    addTask(RecordBuilder::task().inParent(project).dueAt(yesterday));
    addTask(RecordBuilder::task().inParent(project).dueAt(wallClock(today, QTime(13, 59))));
    addTask(RecordBuilder::task().inParent(project).dueAt(wallClock(today, QTime(14, 1))));
    addTask(RecordBuilder::task().inParent(project).dueAt(yesterday).withState(COMPLETED_OBJECT_STATE));
    addTask(RecordBuilder::task().inParent(project).dueAt(yesterday).withState(DELETED_OBJECT_STATE));
    addTask(RecordBuilder::task().inParent(project));
    addTask(RecordBuilder::task().dueAt(yesterday));

    QCOMPARE(m_tasks->getProjectOverdueTaskCount(project), 2);
}

NORVEL_TEST_MAIN(TaskStoreDayTest)

#include "taskstoredaytest.moc"

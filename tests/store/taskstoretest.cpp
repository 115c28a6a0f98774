#include "store/taskstore.h"
#include "core/clock.h"
#include "store/databasehandler.h"
#include "store/projectstore.h"
#include "testlib/logcapture.h"
#include "testlib/recordbuilder.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QSettings>
#include <QStandardPaths>
#include <QtTest>

namespace {
// 14:00 in Berlin; given in UTC, since constants are made before the test time zone is set.
const QDateTime pinnedNow(QDate(2026, 3, 10), QTime(13, 0), Qt::UTC);
const uint pinnedTimestamp = uint(pinnedNow.toSecsSinceEpoch());
const uint daySeconds = 24 * 3600;
const QString selectTask = QStringLiteral("SELECT * FROM task WHERE id = ?");

QString dataFilePath(const QString& fileName)
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QLatin1Char('/') + fileName;
}

void writeDataFile(const QString& fileName, const QString& key, const QVariant& value)
{
    QSettings settings(dataFilePath(fileName), QSettings::IniFormat);
    settings.setValue(key, value);
    settings.sync();
}

QStringList sortedIds(const QList<DataObject>& objects)
{
    QStringList ids;
    for (const DataObject& object : objects)
        ids.append(object.value(QStringLiteral("ID")).toString());
    ids.sort();
    return ids;
}
} // namespace

class TaskStoreTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void nextDatesFollowTheRule_data();
    void nextDatesFollowTheRule();
    void movedDatesAreLogged();

    void createWithoutNameOrParentIsRefused_data();
    void createWithoutNameOrParentIsRefused();
    void localUpdateDropsOccurrenceKeysAndKeepsLocal();
    void completedRepeatingTaskStaysActive_data();
    void completedRepeatingTaskStaysActive();
    void restoreMovesTaskOutOfMissingProject_data();
    void restoreMovesTaskOutOfMissingProject();
    void parentsMoveToNewProjectId();

    void taskCreatedWithoutContextIsNotContextless();
    void idWithQuoteIsAnOrdinaryId();
    void trashShowsTasksDeletedSinceTheHorizon_data();
    void trashShowsTasksDeletedSinceTheHorizon();
    void tasksAreFoundByTheirIds();
    void taskCountLeavesOutPredefinedObjects();

private:
    QString addTask(const QVariantMap& task);
    QVariant column(const QString& id, const QString& name) const;

    std::unique_ptr<TestDatabase> m_database;
    DatabaseHandler* m_handler = nullptr;
    TaskStore* m_tasks = nullptr;
};

void TaskStoreTest::init()
{
    Clock::pin(pinnedNow);
    m_database = std::make_unique<TestDatabase>();
    QVERIFY(m_database->isReady());
    m_handler = m_database->handler();
    m_tasks = m_handler->tasks();
}

void TaskStoreTest::cleanup()
{
    m_database.reset();
    QFile::remove(dataFilePath(QStringLiteral("settings.dat")));
    QFile::remove(dataFilePath(QStringLiteral("predefined_objects.dat")));
    Clock::unpin();
}

// Stores the task as the interface or, with SYNC, as sync would, and commits it.
QString TaskStoreTest::addTask(const QVariantMap& task)
{
    m_handler->beginTransaction();
    if (!m_tasks->createTaskLocally(task))
        return QString();
    const QString id = task.value(QStringLiteral("ID"), m_handler->lastCreatedObjectId()).toString();
    m_handler->commitChanges();
    return id;
}

QVariant TaskStoreTest::column(const QString& id, const QString& name) const
{
    const QList<QVariantMap> rows = m_database->rows(selectTask, {id});
    return rows.isEmpty() ? QVariant() : rows.first().value(name);
}

void TaskStoreTest::nextDatesFollowTheRule_data()
{
    QTest::addColumn<QString>("period");
    QTest::addColumn<QDateTime>("start");
    QTest::addColumn<QDateTime>("due");
    QTest::addColumn<QDateTime>("nextStart");
    QTest::addColumn<QDateTime>("nextDue");

    const auto at = [](int month, int day, int hour) {
        return wallClock(QDate(2026, month, day), QTime(hour, 0));
    };
    QTest::newRow("every 2 days") << "d;2" << at(3, 9, 8) << at(3, 10, 18) << at(3, 11, 8) << at(3, 12, 18);
    QTest::newRow("every 2 weeks") << "w;2" << at(3, 9, 8) << at(3, 10, 18) << at(3, 23, 8) << at(3, 24, 18);
    QTest::newRow("Mon Wed Fri, due Monday")
        << "w;1;1,3,5" << at(3, 8, 8) << at(3, 9, 18) << at(3, 10, 8) << at(3, 11, 18);
    QTest::newRow("Mon Wed Fri, due Friday")
        << "w;1;1,3,5" << at(3, 12, 8) << at(3, 13, 18) << at(3, 15, 8) << at(3, 16, 18);
    QTest::newRow("Mon Wed Fri every 2 weeks, due Friday")
        << "w;2;1,3,5" << at(3, 13, 8) << at(3, 13, 18) << at(3, 23, 8) << at(3, 23, 18);
    QTest::newRow("Mon Wed Fri, due Tuesday")
        << "w;1;1,3,5" << at(3, 9, 8) << at(3, 10, 18) << at(3, 9, 8) << at(3, 10, 18);
    QTest::newRow("monthly from 31 January")
        << "m;1" << at(1, 31, 8) << at(1, 31, 18) << at(2, 28, 8) << at(2, 28, 18);
    QTest::newRow("one field only") << "d" << at(3, 9, 8) << at(3, 10, 18) << at(3, 9, 8) << at(3, 10, 18);
    QTest::newRow("no start date stays without")
        << "d;1" << QDateTime() << at(3, 10, 18) << QDateTime() << at(3, 11, 18);
}

void TaskStoreTest::nextDatesFollowTheRule()
{
    QFETCH(QString, period);
    QFETCH(QDateTime, start);
    QFETCH(QDateTime, due);
    QFETCH(QDateTime, nextStart);
    QFETCH(QDateTime, nextDue);

    DOTask task = RecordBuilder::task().repeating(period).startingAt(start).dueAt(due);
    TaskStore::setupNewTaskDates(task);

    QCOMPARE(task.value(QStringLiteral("START")).toDateTime(), nextStart);
    QCOMPARE(task.value(QStringLiteral("DUE")).toDateTime(), nextDue);
}

void TaskStoreTest::movedDatesAreLogged()
{
    DOTask task = RecordBuilder::task().withId("t-1").repeating("d;1").dueAt(wallClock(QDate(2026, 3, 10)));
    LogCapture log;

    TaskStore::setupNewTaskDates(task);

    QVERIFY(log.contains(QStringLiteral("Task dates updated. { id: t-1, start: , due: %1} \n ")
                             .arg(wallClock(QDate(2026, 3, 11)).toString())));
}

void TaskStoreTest::createWithoutNameOrParentIsRefused_data()
{
    QTest::addColumn<bool>("remotely");
    QTest::addColumn<QVariantMap>("task");
    QTest::addColumn<bool>("created");

    for (const bool remotely : {false, true}) {
        const char* how = remotely ? "remotely" : "locally";
        RecordBuilder task = RecordBuilder::task().withId(QStringLiteral("new-task"));
        if (remotely)
            task.fromServer();
        QTest::addRow("%s, without NAME", how)
            << remotely << RecordBuilder(task).without("NAME").build() << false;
        QTest::addRow("%s, without PARENT", how)
            << remotely << RecordBuilder(task).without("PARENT").build() << false;
        QTest::addRow("%s, with an empty NAME", how)
            << remotely << RecordBuilder(task).named("").build() << true;
    }
}

void TaskStoreTest::createWithoutNameOrParentIsRefused()
{
    QFETCH(bool, remotely);
    QFETCH(QVariantMap, task);
    QFETCH(bool, created);
    LogCapture log;

    const bool result = remotely ? m_tasks->createTaskRemotely(task) : m_tasks->createTaskLocally(task);

    QCOMPARE(result, created);
    QCOMPARE(m_database->rows(selectTask, {"new-task"}).size(), created ? 1 : 0);
    QCOMPARE(log.messages("WARN").contains(QStringLiteral("Task does not contain NAME or PARENT!")),
             !created);
}

void TaskStoreTest::localUpdateDropsOccurrenceKeysAndKeepsLocal()
{
    const QString id = addTask(RecordBuilder::task());
    Clock::pin(pinnedNow.addSecs(60));
    DOTask occurrence = m_tasks->getTaskById(id);
    occurrence.insert(QStringLiteral("NAME"), QStringLiteral("Renamed"));
    occurrence.insert(QStringLiteral("LOCAL"), 0);
    occurrence.insert(QStringLiteral("REPEATED"), true);
    occurrence.insert(QStringLiteral("FAKESTART"), wallClock(QDate(2026, 3, 12)));
    occurrence.insert(QStringLiteral("FAKEDUE"), wallClock(QDate(2026, 3, 12)));
    QVariantMap updated;

    QVERIFY(m_tasks->updateTaskLocally(occurrence, &updated));

    // A caller that collects the map holds the transaction; there is none here, so the row is saved.
    const QVariantMap row = m_database->committedRows(selectTask, {id}).value(0);
    QCOMPARE(row.value("name").toString(), QStringLiteral("Renamed"));
    QCOMPARE(row.value("local").toInt(), 1);
    QCOMPARE(row.value("synced").toInt(), 0);
    QCOMPARE(row.value("timestamp").toUInt(), pinnedTimestamp + 60);
    for (const char* key : {"LOCAL", "REPEATED", "FAKESTART", "FAKEDUE"})
        QVERIFY2(!updated.contains(key), key);
    QCOMPARE(updated.value("TIMESTAMP").toUInt(), pinnedTimestamp + 60);
}

void TaskStoreTest::completedRepeatingTaskStaysActive_data()
{
    QTest::addColumn<QString>("period");
    QTest::addColumn<int>("storedState");
    QTest::addColumn<QDateTime>("storedDue");

    const QDateTime due = wallClock(QDate(2026, 3, 10), QTime(18, 0));
    QTest::newRow("daily rule moves on") << "d;1" << int(DEFAULT_OBJECT_STATE) << due.addDays(1);
    QTest::newRow("one-field rule looks untouched") << "d" << int(DEFAULT_OBJECT_STATE) << due;
    QTest::newRow("no rule completes") << "" << int(COMPLETED_OBJECT_STATE) << due;
}

void TaskStoreTest::completedRepeatingTaskStaysActive()
{
    QFETCH(QString, period);
    QFETCH(int, storedState);
    QFETCH(QDateTime, storedDue);
    const QDateTime due = wallClock(QDate(2026, 3, 10), QTime(18, 0));
    const QString id = addTask(RecordBuilder::task().repeating(period).dueAt(due));

    DOTask completed = m_tasks->getTaskById(id);
    completed.insert(QStringLiteral("STATE"), COMPLETED_OBJECT_STATE);
    QVERIFY(m_tasks->updateTaskLocally(completed));

    const DOTask stored = m_tasks->getTaskById(id);
    QCOMPARE(stored.value("STATE").toInt(), storedState);
    QCOMPARE(stored.value("DUE").toDateTime(), storedDue);
    QCOMPARE(stored.value("START").toString(), QString());
}

void TaskStoreTest::restoreMovesTaskOutOfMissingProject_data()
{
    QTest::addColumn<QString>("parent");
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("restoredParent");
    QTest::addColumn<int>("restoredState");

    const QString deletedProject = QStringLiteral("deleted-project");
    const QString missingProject = QStringLiteral("missing-project");
    const QString inbox = QString::fromLatin1(RecordBuilder::inboxId);
    const QString oneStepActions = QString::fromLatin1(RecordBuilder::oneStepActionsId);
    QTest::newRow("missing project") << missingProject << 1 << oneStepActions << 0;
    QTest::newRow("deleted project stays") << deletedProject << 1 << deletedProject << 0;
    QTest::newRow("inbox") << inbox << 1 << inbox << 0;
    QTest::newRow("one step actions") << oneStepActions << 1 << oneStepActions << 0;
    QTest::newRow("completed comes back completed") << deletedProject << 3 << deletedProject << 2;
}

void TaskStoreTest::restoreMovesTaskOutOfMissingProject()
{
    QFETCH(QString, parent);
    QFETCH(int, state);
    QFETCH(QString, restoredParent);
    QFETCH(int, restoredState);
    m_handler->projects()->createProjectLocally(
        RecordBuilder::project().withId("deleted-project").withState(DELETED_OBJECT_STATE));
    const QString id = addTask(RecordBuilder::task().inParent(parent).withState(state));

    QVERIFY(m_tasks->restoreTask(m_tasks->getTaskById(id)));
    QVERIFY(m_handler->commitChanges());

    QCOMPARE(column(id, "parent").toString(), restoredParent);
    QCOMPARE(column(id, "state").toInt(), restoredState);
}

void TaskStoreTest::parentsMoveToNewProjectId()
{
    const QString moved = addTask(RecordBuilder::task().inParent("old-id").withTimestamp(1600000000));
    const QString other = addTask(RecordBuilder::task().inParent("other-id").withTimestamp(1600000000));
    m_handler->executeQuery("UPDATE task SET synced = 1");

    QVERIFY(m_tasks->updateTaskParents("old-id", "new-id"));

    QCOMPARE(column(moved, "parent").toString(), QStringLiteral("new-id"));
    QCOMPARE(column(moved, "timestamp").toUInt(), pinnedTimestamp);
    QCOMPARE(column(moved, "synced").toInt(), 1);
    QCOMPARE(column(other, "parent").toString(), QStringLiteral("other-id"));
    QCOMPARE(column(other, "timestamp").toUInt(), 1600000000u);
}

void TaskStoreTest::taskCreatedWithoutContextIsNotContextless()
{
    const QString withEmptyContext = addTask(RecordBuilder::task());
    addTask(RecordBuilder::task().without("CONTEXT"));
    addTask(RecordBuilder::task().withContext("context"));

    QCOMPARE(sortedIds(m_tasks->getNoContextTasks()), QStringList{withEmptyContext});
}

void TaskStoreTest::idWithQuoteIsAnOrdinaryId()
{
    const QString id = QStringLiteral("it's");
    const QString parent = QStringLiteral("O'Brien's project");
    QVERIFY(!addTask(RecordBuilder::task().withId(id).inParent(parent).withContext(parent)).isEmpty());

    QCOMPARE(m_tasks->getTaskById(id).value("PARENT").toString(), parent);
    QCOMPARE(sortedIds(m_tasks->getProjectTasks(parent)), QStringList{id});
    QCOMPARE(m_tasks->getContextTaskCount(parent), 1);
    QCOMPARE(sortedIds(m_tasks->getTasksByIds({id})), QStringList{id});
    QVERIFY(m_tasks->updateTaskParents(parent, "plain"));
    QCOMPARE(column(id, "parent").toString(), QStringLiteral("plain"));
}

void TaskStoreTest::trashShowsTasksDeletedSinceTheHorizon_data()
{
    QTest::addColumn<uint>("emptiedAt");
    QTest::addColumn<int>("daysAgo");
    QTest::addColumn<bool>("inTrash");

    QTest::newRow("never emptied, 13 days ago") << 0u << 13 << true;
    QTest::newRow("never emptied, 15 days ago") << 0u << 15 << false;
    QTest::newRow("emptied 2 days ago, deleted 1 day ago") << pinnedTimestamp - 2 * daySeconds << 1 << true;
    QTest::newRow("emptied 2 days ago, deleted 3 days ago") << pinnedTimestamp - 2 * daySeconds << 3 << false;
    QTest::newRow("emptied 20 days ago, deleted 15 days ago")
        << pinnedTimestamp - 20 * daySeconds << 15 << true;
}

void TaskStoreTest::trashShowsTasksDeletedSinceTheHorizon()
{
    QFETCH(uint, emptiedAt);
    QFETCH(int, daysAgo);
    QFETCH(bool, inTrash);
    if (emptiedAt != 0)
        writeDataFile("settings.dat", "trash_cleanup_timestamp", emptiedAt);
    const QString id = addTask(RecordBuilder::task()
                                   .withState(COMPLETED_AND_DELETED_OBJECT_STATE)
                                   .withTimestamp(pinnedTimestamp - uint(daysAgo) * daySeconds));

    QCOMPARE(sortedIds(m_tasks->getDeletedTasks()).contains(id), inTrash);
    QCOMPARE(m_tasks->hasDeletedTasks(), inTrash);
}

void TaskStoreTest::tasksAreFoundByTheirIds()
{
    const QString first = addTask(RecordBuilder::task());
    addTask(RecordBuilder::task());
    const QString third = addTask(RecordBuilder::task().withState(DELETED_OBJECT_STATE));

    QStringList expected{first, third};
    expected.sort();
    QCOMPARE(sortedIds(m_tasks->getTasksByIds({first, third, "unknown"})), expected);
    QVERIFY(m_tasks->getTasksByIds({}).isEmpty());
}

void TaskStoreTest::taskCountLeavesOutPredefinedObjects()
{
    writeDataFile("predefined_objects.dat", "predefined_ids", ",seed-1,seed-2");
    addTask(RecordBuilder::task().withId("seed-1"));
    addTask(RecordBuilder::task().withId("seed-2").withState(DELETED_OBJECT_STATE));
    addTask(RecordBuilder::task().withId("user-1"));
    addTask(RecordBuilder::task().withId("user-2").withState(COMPLETED_AND_DELETED_OBJECT_STATE));

    QCOMPARE(m_tasks->getTaskCount(), 2);
}

NORVEL_TEST_MAIN(TaskStoreTest)

#include "taskstoretest.moc"

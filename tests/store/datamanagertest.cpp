#include "store/datamanager.h"
#include "core/clock.h"
#include "platform/hardwaremanager.h"
#include "store/databasehandler.h"
#include "testlib/recordbuilder.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"
#include "utilities/helper.h"

#include <QApplication>
#include <QDataStream>
#include <QDir>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>
#include <QtTest>

#include <atomic>

namespace {
const QStringList oldSortHashKeys = {
    QStringLiteral("projects_sort_hash"), QStringLiteral("contexts_sort_hash"),
    QStringLiteral("daily_plan_sort_hash"), QStringLiteral("favorites_sort_hash")};

QString settingsFilePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
           QStringLiteral("/settings.dat");
}

QByteArray streamed(const QHash<QString, QHash<QString, int>>& orderHashes)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << orderHashes;
    return bytes;
}

// Sort orders as an older version left them in settings.dat, beside a setting that must stay.
void writeOldSortHashes()
{
    QSettings settings(settingsFilePath(), QSettings::IniFormat);
    const QString inbox = QString::fromLatin1(RecordBuilder::inboxId);
    settings.setValue(oldSortHashKeys[0],
                      streamed({{QStringLiteral("root_projects"), {{QStringLiteral("p1"), 0}}},
                                {inbox, {{QStringLiteral("t1"), 0}, {QStringLiteral("t2"), 1}}}}));
    settings.setValue(oldSortHashKeys[1], streamed({{QStringLiteral("c1"), {{QStringLiteral("t3"), 0}}}}));
    settings.setValue(oldSortHashKeys[2],
                      streamed({{QStringLiteral("12.03.2024"), {{QStringLiteral("t4"), 0}}}}));
    settings.setValue(oldSortHashKeys[3],
                      streamed({{QStringLiteral("favorites"), {{QStringLiteral("t5"), 0}}}}));
    settings.setValue(QStringLiteral("show_completed_tasks"), true);
    settings.sync();
}

QStringList idsOf(const QList<DataObject>& objects)
{
    QStringList ids;
    for (const DataObject& object : objects)
        ids.append(object.value(QStringLiteral("ID")).toString());
    return ids;
}

QTimer* timerNamed(const QString& name)
{
    return DataManager::instance()->findChild<QTimer*>(name);
}
} // namespace

class DataManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void blockingCallsRunOnTheWorkerOneAfterAnother();
    void repeatedRequestsRestartTheirOneTimer_data();
    void repeatedRequestsRestartTheirOneTimer();
    void startingASyncStopsTheDelayedSync_data();
    void startingASyncStopsTheDelayedSync();
    void wakeUpDelaysASync();
    void comingOnlineDelaysASyncAndRearmsMidnight();
    void oldSortHashesLeaveTheSettingsFile();
    void indicatorRequestAnswersBySignal_data();
    void indicatorRequestAnswersBySignal();
    void dayListAndOverdueCountAddRepeatingOccurrences();
    void objectsAreCreatedDeletedRestoredAndListed();

private:
    QDate m_occurrenceDay;
};

void DataManagerTest::initTestCase()
{
    QVERIFY(TestDatabase::unpackApplicationDatabase());
    writeOldSortHashes();

    DataManager* dataManager = DataManager::instance();
    QVERIFY(dataManager->isDataPrepared());

    // A task overdue since the day before yesterday; a repeating task whose weekly occurrence falls on a day
    // far ahead that nothing else in this test touches, and a plain task of that day.
    const QDate today = Clock::currentDate();
    m_occurrenceDay = today.addDays(60);
    const QDate anchor = m_occurrenceDay.addDays(-7);
    QVERIFY(dataManager->createTaskLocally(
        RecordBuilder::task(QStringLiteral("Overdue")).dueAt(wallClock(today.addDays(-2), QTime(10, 0)))));
    QVERIFY(dataManager->createTaskLocally(RecordBuilder::task(QStringLiteral("Water plants"))
                                               .repeating(QStringLiteral("d;7"))
                                               .startingAt(wallClock(anchor, QTime(9, 0)))
                                               .dueAt(wallClock(anchor, QTime(10, 0)))));
    QVERIFY(dataManager->createTaskLocally(RecordBuilder::task(QStringLiteral("Call plumber"))
                                               .startingAt(wallClock(m_occurrenceDay, QTime(8, 0)))
                                               .dueAt(wallClock(m_occurrenceDay, QTime(9, 0)))));
    QVERIFY(dataManager->commitChanges());
}

void DataManagerTest::blockingCallsRunOnTheWorkerOneAfterAnother()
{
    QThread* worker = DatabaseHandler::instance()->thread();
    QVERIFY(worker != QThread::currentThread());
    QVERIFY(worker->isRunning());
    std::atomic<bool> earlierJobDone{false};
    QMetaObject::invokeMethod(
        DatabaseHandler::instance(),
        [&earlierJobDone] {
            QThread::msleep(200);
            earlierJobDone = true;
        },
        Qt::QueuedConnection);

    const bool prepared = DataManager::instance()->isDataPrepared();

    // The call waited in the worker's queue behind the job posted before it.
    QVERIFY(earlierJobDone);
    QVERIFY(prepared);
}

void DataManagerTest::repeatedRequestsRestartTheirOneTimer_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QString>("timerName");
    QTest::addColumn<int>("interval");

    QTest::newRow("delayed sync") << QByteArray("startSyncDelayed") << "delayedSyncTimer" << 10000;
    QTest::newRow("sorted lists cleanup")
        << QByteArray("cleanSortedLists") << "sortedListsCleanupTimer" << 3000;
}

void DataManagerTest::repeatedRequestsRestartTheirOneTimer()
{
    QFETCH(QByteArray, request);
    QFETCH(QString, timerName);
    QFETCH(int, interval);
    DataManager* dataManager = DataManager::instance();
    QTimer* timer = timerNamed(timerName);
    QVERIFY(timer);

    QVERIFY(QMetaObject::invokeMethod(dataManager, request.constData()));
    QTest::qWait(300);
    QVERIFY(QMetaObject::invokeMethod(dataManager, request.constData()));

    QCOMPARE(dataManager->findChildren<QTimer*>(timerName).size(), 1);
    QVERIFY(timer->isActive());
    QVERIFY(timer->isSingleShot());
    QCOMPARE(timer->interval(), interval);
    // Counted from the second request, not the first.
    QVERIFY(timer->remainingTime() > interval - 250);
    timer->stop();
}

void DataManagerTest::startingASyncStopsTheDelayedSync_data()
{
    QTest::addColumn<QByteArray>("start");

    QTest::newRow("startSync") << QByteArray("startSync");
    QTest::newRow("startSyncSilent") << QByteArray("startSyncSilent");
    QTest::newRow("cancelDelayedSync") << QByteArray("cancelDelayedSync");
}

void DataManagerTest::startingASyncStopsTheDelayedSync()
{
    QFETCH(QByteArray, start);
    DataManager* dataManager = DataManager::instance();
    dataManager->startSyncDelayed();

    QVERIFY(QMetaObject::invokeMethod(dataManager, start.constData()));

    QVERIFY(!timerNamed(QStringLiteral("delayedSyncTimer"))->isActive());
}

void DataManagerTest::wakeUpDelaysASync()
{
    DataManager::instance()->cancelDelayedSync();

    emit HardwareManager::instance()->computerWokeUp();

    QTimer* delayed = timerNamed(QStringLiteral("delayedSyncTimer"));
    QVERIFY(delayed->isActive());
    delayed->stop();
}

void DataManagerTest::comingOnlineDelaysASyncAndRearmsMidnight()
{
    DataManager::instance()->cancelDelayedSync();
    QTimer* midnight = timerNamed(QStringLiteral("midnightTimer"));
    QVERIFY(midnight->isActive());
    Clock::pin(QDateTime(Clock::currentDate(), QTime(23, 59)));

    emit HardwareManager::instance()->internetConnectionOnline();

    Clock::unpin();
    QTimer* delayed = timerNamed(QStringLiteral("delayedSyncTimer"));
    QVERIFY(delayed->isActive());
    delayed->stop();
    QVERIFY(midnight->isActive());
    QVERIFY(midnight->isSingleShot());
    QCOMPARE(midnight->interval(), 60 * 1000);
}

void DataManagerTest::oldSortHashesLeaveTheSettingsFile()
{
    const QSettings settings(settingsFilePath(), QSettings::IniFormat);

    for (const QString& key : oldSortHashKeys)
        QTRY_VERIFY2(!settings.contains(key), qPrintable(key));
    QCOMPARE(settings.value(QStringLiteral("show_completed_tasks")), QVariant(true));
}

void DataManagerTest::indicatorRequestAnswersBySignal_data()
{
    QTest::addColumn<int>("dayOffset");
    QTest::addColumn<bool>("hasActiveTasks");
    QTest::addColumn<bool>("hasOverdueTasks");
    QTest::addColumn<bool>("hasRepeatedTasks");

    QTest::newRow("yesterday, overdue only counts today") << -1 << false << false << false;
    QTest::newRow("today") << 0 << false << true << false;
    QTest::newRow("day of an occurrence") << 60 << true << false << true;
}

void DataManagerTest::indicatorRequestAnswersBySignal()
{
    QFETCH(int, dayOffset);
    QFETCH(bool, hasActiveTasks);
    QFETCH(bool, hasOverdueTasks);
    QFETCH(bool, hasRepeatedTasks);
    DataManager* dataManager = DataManager::instance();
    QSignalSpy answers(dataManager, &DataManager::indicatorStateForDateChanged);
    const QDateTime dateTime(Clock::currentDate().addDays(dayOffset), QTime(12, 0));

    dataManager->requestIndicatorStateForDate(dateTime);

    QCOMPARE(answers.count(), 0);
    QVERIFY(answers.wait());
    QCOMPARE(answers.count(), 1);
    QCOMPARE(answers.at(0).at(0).toDateTime(), dateTime);
    const auto state = answers.at(0).at(1).value<IndicatorState>();
    QCOMPARE(state.hasActiveTasks, hasActiveTasks);
    QCOMPARE(state.hasOverdueTasks, hasOverdueTasks);
    QCOMPARE(state.hasRepeatedTasks, hasRepeatedTasks);
}

void DataManagerTest::dayListAndOverdueCountAddRepeatingOccurrences()
{
    DataManager* dataManager = DataManager::instance();

    const QList<DataObject> day = dataManager->getDayTasks(m_occurrenceDay);

    QVERIFY(!day.isEmpty());
    const DataObject occurrence = day.last();
    QCOMPARE(occurrence.value(QStringLiteral("NAME")).toString(), QStringLiteral("Water plants"));
    QVERIFY(occurrence.value(QStringLiteral("REPEATED")).toBool());
    QStringList storedNames;
    for (const DataObject& object : day.mid(0, day.size() - 1)) {
        QVERIFY(!object.contains(QStringLiteral("REPEATED")));
        storedNames.append(object.value(QStringLiteral("NAME")).toString());
    }
    QVERIFY(storedNames.contains(QStringLiteral("Call plumber")));
    // The plain task at 9:00 and the occurrence at 10:00 are both past by evening.
    QCOMPARE(dataManager->getOverdueDayTaskCount(QDateTime(m_occurrenceDay, QTime(20, 0))), 2);
}

void DataManagerTest::objectsAreCreatedDeletedRestoredAndListed()
{
    DataManager* dataManager = DataManager::instance();
    QVERIFY(dataManager->createProjectLocally(RecordBuilder::folder(QStringLiteral("Home"))));
    const QString folderId = dataManager->lastCreatedObjectId();
    QVERIFY(dataManager->createProjectLocally(
        RecordBuilder::project(QStringLiteral("Garden")).inParent(folderId)));
    const QString projectId = dataManager->lastCreatedObjectId();
    QVERIFY(dataManager->createContextLocally(RecordBuilder::context(QStringLiteral("@garden"))));
    const QString contextId = dataManager->lastCreatedObjectId();
    QVERIFY(dataManager->createTaskLocally(
        RecordBuilder::task(QStringLiteral("Plant tulips")).inParent(projectId).withContext(contextId)));
    const QString taskId = dataManager->lastCreatedObjectId();
    QVERIFY(dataManager->commitChanges());

    QCOMPARE(idsOf(dataManager->getNestedObjects(folderId)), QStringList{projectId});
    QCOMPARE(idsOf(dataManager->getProjectTasks(projectId)), QStringList{taskId});
    QCOMPARE(idsOf(dataManager->getContextTasks(contextId)), QStringList{taskId});
    QVERIFY(idsOf(dataManager->getAllContexts()).contains(contextId));

    DOTask task = dataManager->getTaskById(taskId);
    task.insert(QStringLiteral("STATE"), DELETED_OBJECT_STATE);
    QVERIFY(dataManager->updateTaskLocally(task));
    QVERIFY(dataManager->commitChanges());
    QVERIFY(idsOf(dataManager->getDeletedTasks()).contains(taskId));
    QVERIFY(dataManager->restoreTask(dataManager->getTaskById(taskId)));
    QVERIFY(dataManager->commitChanges());
    QCOMPARE(dataManager->getTaskById(taskId).value(QStringLiteral("STATE")).toInt(), DEFAULT_OBJECT_STATE);

    DOProject project = dataManager->getProjectById(projectId);
    project.insert(QStringLiteral("STATE"), DELETED_OBJECT_STATE);
    QVERIFY(dataManager->updateProjectLocally(project));
    QVERIFY(dataManager->commitChanges());
    QVERIFY(idsOf(dataManager->getDeletedProjects()).contains(projectId));
    QVERIFY(dataManager->restoreProject(dataManager->getProjectById(projectId)));
    QVERIFY(dataManager->commitChanges());
    QCOMPARE(dataManager->getProjectById(projectId).value(QStringLiteral("STATE")).toInt(),
             DEFAULT_OBJECT_STATE);

    DOContext context = dataManager->getContextById(contextId);
    context.insert(QStringLiteral("STATE"), DELETED_OBJECT_STATE);
    QVERIFY(dataManager->updateContextLocally(context));
    QVERIFY(dataManager->commitChanges());
    QVERIFY(idsOf(dataManager->getDeletedContexts()).contains(contextId));
    QVERIFY(!idsOf(dataManager->getAllContexts()).contains(contextId));
    QVERIFY(dataManager->restoreContext(dataManager->getContextById(contextId)));
    QVERIFY(dataManager->commitChanges());
    QVERIFY(idsOf(dataManager->getAllContexts()).contains(contextId));
}

NORVEL_TEST_MAIN(DataManagerTest)
#include "datamanagertest.moc"

#include "store/datamanager.h"
#include "core/clock.h"
#include "platform/hardwaremanager.h"
#include "reminders/notificationmanager.h"
#include "store/databasehandler.h"
#include "testlib/recordbuilder.h"
#include "testlib/storehelpers.h"
#include "testlib/testdatabase.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QDataStream>
#include <QSettings>
#include <QSignalSpy>
#include <QThread>
#include <QTimer>
#include <QtTest>

#include <atomic>

namespace {
const QStringList oldSortHashKeys = {"projects_sort_hash", "contexts_sort_hash", "daily_plan_sort_hash",
                                     "favorites_sort_hash"};

using namespace SortingNamespace;

// An order of settings.dat under one of the old keys, and the list it becomes.
struct OldOrder
{
    int keyIndex;
    QString oldId;
    QString listId;
    ListType listType;
};
const QList<OldOrder> oldOrders = {{0, "root_projects", "root_projects", ListTypeFolder},
                                   {0, RecordBuilder::inboxId, "norvelbox", ListTypeProject},
                                   {0, RecordBuilder::oneStepActionsId, "1_step_actions", ListTypeProject},
                                   {1, "context", "context", ListTypeContext},
                                   {2, "14.05.2031", "14052031", ListTypeDailyPlan},
                                   {3, "favorites", "root_favorites", ListTypeFavorites}};

QTimer* timerNamed(const QString& name)
{
    return DataManager::instance()->findChild<QTimer*>(name);
}
} // namespace

class DataManagerTest : public QObject
{
    Q_OBJECT

    QDate m_occurrenceDay;

private slots:
    void initTestCase()
    {
        QVERIFY(TestDatabase::unpackApplicationDatabase());
        // Sort orders as an older version left them in settings.dat, beside a setting that must stay.
        QVector<QHash<QString, OrderHash>> hashes(oldSortHashKeys.size());
        for (int index = 0; index < oldOrders.size(); ++index)
            hashes[oldOrders.at(index).keyIndex].insert(oldOrders.at(index).oldId, {{"o", index}});
        for (int keyIndex = 0; keyIndex < hashes.size(); ++keyIndex) {
            QByteArray bytes;
            QDataStream stream(&bytes, QIODevice::WriteOnly);
            stream << hashes.at(keyIndex);
            writeDataFile("settings.dat", oldSortHashKeys.at(keyIndex), bytes);
        }
        writeDataFile("settings.dat", "show_completed_tasks", true);

        DataManager* dataManager = DataManager::instance();
        // A task overdue since the day before yesterday; a repeating task whose weekly occurrence falls on a
        // day far ahead that nothing else in this test touches, and a plain task of that day.
        const QDate today = Clock::currentDate();
        m_occurrenceDay = today.addDays(60);
        const QDate anchor = m_occurrenceDay.addDays(-7);
        QVERIFY(dataManager->createTaskLocally(
            RecordBuilder::task("Overdue").dueAt(wallClock(today.addDays(-2), QTime(10, 0)))));
        QVERIFY(dataManager->createTaskLocally(RecordBuilder::task("Water plants")
                                                   .repeating("d;7")
                                                   .startingAt(wallClock(anchor, QTime(9, 0)))
                                                   .dueAt(wallClock(anchor, QTime(10, 0)))));
        QVERIFY(dataManager->createTaskLocally(RecordBuilder::task("Call plumber")
                                                   .startingAt(wallClock(m_occurrenceDay, QTime(8, 0)))
                                                   .dueAt(wallClock(m_occurrenceDay, QTime(9, 0)))));
        QVERIFY(dataManager->commitChanges());
    }

    void blockingCallsRunOnTheWorkerOneAfterAnother()
    {
        QThread* worker = DatabaseHandler::instance()->thread();
        QVERIFY(worker != QThread::currentThread());
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

    void repeatedRequestsRestartTheirOneTimer_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QString>("timerName");
        QTest::addColumn<int>("interval");
        QTest::newRow("delayed sync") << QByteArray("startSyncDelayed") << "delayedSyncTimer" << 10000;
        QTest::newRow("sorted lists cleanup")
            << QByteArray("cleanSortedLists") << "sortedListsCleanupTimer" << 3000;
    }

    void repeatedRequestsRestartTheirOneTimer()
    {
        QFETCH(QByteArray, request);
        QFETCH(QString, timerName);
        QFETCH(int, interval);
        QTimer* timer = timerNamed(timerName);

        QVERIFY(QMetaObject::invokeMethod(DataManager::instance(), request.constData()));
        QTest::qWait(interval / 5);
        const int remainingBeforeSecondRequest = timer->remainingTime();
        QVERIFY(QMetaObject::invokeMethod(DataManager::instance(), request.constData()));

        QCOMPARE(DataManager::instance()->findChildren<QTimer*>(timerName).size(), 1);
        QVERIFY(timer->isActive() && timer->isSingleShot());
        QCOMPARE(timer->interval(), interval);
        // Counted from the second request, not the first.
        QVERIFY(timer->remainingTime() > remainingBeforeSecondRequest);
        timer->stop();
    }

    void delayedSyncIsArmedAndStoppedByItsEvents_data()
    {
        QTest::addColumn<bool>("fromHardware");
        QTest::addColumn<QByteArray>("event");
        QTest::addColumn<bool>("armed");
        QTest::newRow("computer woke up") << true << QByteArray("computerWokeUp") << true;
        QTest::newRow("connection came online") << true << QByteArray("internetConnectionOnline") << true;
        QTest::newRow("startSync") << false << QByteArray("startSync") << false;
        QTest::newRow("cancelDelayedSync") << false << QByteArray("cancelDelayedSync") << false;
    }

    void delayedSyncIsArmedAndStoppedByItsEvents()
    {
        QFETCH(bool, fromHardware);
        QFETCH(QByteArray, event);
        QFETCH(bool, armed);
        armed ? DataManager::instance()->cancelDelayedSync() : DataManager::instance()->startSyncDelayed();
        QObject* source =
            fromHardware ? static_cast<QObject*>(HardwareManager::instance()) : DataManager::instance();
        QTimer* midnight = timerNamed("midnightTimer");
        midnight->stop();

        QVERIFY(QMetaObject::invokeMethod(source, event.constData()));

        QCOMPARE(timerNamed("delayedSyncTimer")->isActive(), armed);
        // Timers stand still in sleep, and the network may have been away over midnight.
        QCOMPARE(midnight->isActive(), fromHardware);
        QVERIFY(midnight->remainingTime() <= 24 * 3600 * 1000);
        timerNamed("delayedSyncTimer")->stop();
    }

    void oldSortHashesBecomeManualLists()
    {
        QCoreApplication::processEvents();
        const QSettings settings(dataFilePath("settings.dat"), QSettings::IniFormat);

        for (int index = 0; index < oldOrders.size(); ++index) {
            const OldOrder& order = oldOrders.at(index);
            QCOMPARE(DataManager::instance()->getSortedListInfo(order.listId, order.listType).orderHash,
                     (OrderHash{{"o", index}}));
        }
        for (const QString& key : oldSortHashKeys)
            QVERIFY2(!settings.contains(key), qPrintable(key));
        QCOMPARE(settings.value("show_completed_tasks"), QVariant(true));
    }

    // Runs after the migration above: of its lists only the root and inbox ones have objects.
    void cleaningDropsListsWhoseObjectsAreGone()
    {
        DataManager* dataManager = DataManager::instance();
        QVERIFY(dataManager->createContextLocally(RecordBuilder::context().withId("home")) &&
                dataManager->commitChanges());
        dataManager->setManualSortedList("home", ListTypeContext, {{"o", 0}});

        dataManager->cleanSortedLists();

        QTRY_VERIFY_WITH_TIMEOUT(!dataManager->hasSortedListInfo("context", ListTypeContext), 5000);
        for (const OldOrder& order : oldOrders.mid(2))
            QVERIFY2(!dataManager->hasSortedListInfo(order.listId, order.listType), qPrintable(order.listId));
        QVERIFY(dataManager->hasSortedListInfo("home", ListTypeContext));
    }

    void indicatorRequestAnswersBySignal_data()
    {
        QTest::addColumn<int>("dayOffset");
        QTest::addColumn<bool>("hasActiveTasks");
        QTest::addColumn<bool>("hasOverdueTasks");
        QTest::addColumn<bool>("hasRepeatedTasks");
        QTest::newRow("yesterday, overdue only counts today") << -1 << false << false << false;
        QTest::newRow("today") << 0 << false << true << false;
        QTest::newRow("day of an occurrence") << 60 << true << false << true;
    }

    void indicatorRequestAnswersBySignal()
    {
        QFETCH(int, dayOffset);
        QSignalSpy answers(DataManager::instance(), &DataManager::indicatorStateForDateChanged);
        const QDateTime dateTime(Clock::currentDate().addDays(dayOffset), QTime(12, 0));

        DataManager::instance()->requestIndicatorStateForDate(dateTime);

        QCOMPARE(answers.count(), 0);
        QVERIFY(answers.wait());
        QCOMPARE(answers.count(), 1);
        QCOMPARE(answers.at(0).at(0).toDateTime(), dateTime);
        const auto state = answers.at(0).at(1).value<IndicatorState>();
        QTEST(state.hasActiveTasks, "hasActiveTasks");
        QTEST(state.hasOverdueTasks, "hasOverdueTasks");
        QTEST(state.hasRepeatedTasks, "hasRepeatedTasks");
    }

    void dayListAndOverdueCountAddRepeatingOccurrences()
    {
        const QList<DataObject> day = DataManager::instance()->getDayTasks(m_occurrenceDay);

        // Stored tasks first, then the occurrences, which alone are marked REPEATED.
        QStringList listed;
        for (const DataObject& object : day)
            listed.append(object.value("NAME").toString() + (object.value("REPEATED").toBool() ? "*" : ""));
        QVERIFY(listed.contains("Call plumber"));
        QCOMPARE(listed.last(), QStringLiteral("Water plants*"));
        QCOMPARE(listed.filter("*").size(), 1);
        // The plain task at 9:00 and the occurrence at 10:00 are both past by evening.
        QCOMPARE(DataManager::instance()->getOverdueDayTaskCount(QDateTime(m_occurrenceDay, QTime(20, 0))),
                 2);
    }

    void remindersAndWishesAreKeptOnTheWorker()
    {
        DataManager* dataManager = DataManager::instance();
        const QVariantMap reminder{{"ID", "t1"},
                                   {"NAME", "Call"},
                                   {"DUEDATE", wallClock(Clock::currentDate().addDays(30), QTime(9, 0))}};

        dataManager->scheduleReminder(reminder, NotificationManager::Hour);
        dataManager->setDueRepeatedReminder("t1", NotificationManager::FiveMinutes);

        QCOMPARE(NotificationManager::instance()->thread(), DatabaseHandler::instance()->thread());
        QVERIFY(dataManager->hasScheduledReminder(reminder, NotificationManager::Hour));
        QCOMPARE(dataManager->getReminderCount(), 1);
        QCOMPARE(dataManager->getDueRepeatedReminders("t1"), QVariantList{NotificationManager::FiveMinutes});
        dataManager->removeAllRemindersById("t1");
        QVERIFY(!dataManager->hasScheduledReminders("t1"));
    }

    void objectsAreCreatedDeletedRestoredAndListed()
    {
        DataManager* data = DataManager::instance();
        QVERIFY(data->createProjectLocally(RecordBuilder::folder("Home")));
        const QString folderId = data->lastCreatedObjectId();
        QVERIFY(data->createProjectLocally(RecordBuilder::project("Garden").inParent(folderId)));
        const QString projectId = data->lastCreatedObjectId();
        QVERIFY(data->createContextLocally(RecordBuilder::context("@garden")));
        const QString contextId = data->lastCreatedObjectId();
        QVERIFY(data->createTaskLocally(
            RecordBuilder::task("Plant tulips").inParent(projectId).withContext(contextId)));
        const QString taskId = data->lastCreatedObjectId();
        QVERIFY(data->commitChanges());

        QCOMPARE(idsOf(data->getNestedObjects(folderId)), QStringList{projectId});
        QCOMPARE(idsOf(data->getProjectTasks(projectId)), QStringList{taskId});
        QCOMPARE(idsOf(data->getContextTasks(contextId)), QStringList{taskId});

        const QVariantMap deleted{{"STATE", DELETED_OBJECT_STATE}};
        QVERIFY(data->updateTaskLocally(changed(data->getTaskById(taskId), deleted)) &&
                data->commitChanges());
        QVERIFY(idsOf(data->getDeletedTasks()).contains(taskId));
        QVERIFY(data->restoreTask(data->getTaskById(taskId)) && data->commitChanges());
        QCOMPARE(data->getTaskById(taskId).value("STATE").toInt(), DEFAULT_OBJECT_STATE);

        QVERIFY(data->updateProjectLocally(changed(data->getProjectById(projectId), deleted)) &&
                data->commitChanges());
        QVERIFY(idsOf(data->getDeletedProjects()).contains(projectId));
        QVERIFY(data->restoreProject(data->getProjectById(projectId)) && data->commitChanges());
        QCOMPARE(data->getProjectById(projectId).value("STATE").toInt(), DEFAULT_OBJECT_STATE);

        QVERIFY(data->updateContextLocally(changed(data->getContextById(contextId), deleted)) &&
                data->commitChanges());
        QVERIFY(idsOf(data->getDeletedContexts()).contains(contextId));
        QVERIFY(!idsOf(data->getAllContexts()).contains(contextId));
        QVERIFY(data->restoreContext(data->getContextById(contextId)) && data->commitChanges());
        QVERIFY(idsOf(data->getAllContexts()).contains(contextId));
    }
};

NORVEL_TEST_MAIN(DataManagerTest)
#include "datamanagertest.moc"

#include "reminders/notificationmanager.h"
#include "core/clock.h"
#include "platform/desktopnotifications.h"
#include "reminders/notificationmanagerprivate.h"
#include "services/repeatedtaskhelper.h"
#include "testlib/logcapture.h"
#include "testlib/notificationservice.h"
#include "testlib/privatesessionbus.h"
#include "testlib/recordbuilder.h"
#include "testlib/storehelpers.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QDBusConnection>
#include <QFile>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

using Type = NotificationManager::NotificationType;
Q_DECLARE_METATYPE(NotificationManager::NotificationType)

namespace {
const QString taskId = QStringLiteral("0d9a4c1e-6b7f-4e21-9c55-3f2a8b1d7e60");
const QString clientConnection = QStringLiteral("reminder-client");

// In Europe/Berlin, 26 March 2023 starts summer time: the day before is an hour further from UTC.
const QDateTime now(QDate(2023, 3, 20), QTime(12, 0), Qt::OffsetFromUTC, 3600);

QDateTime berlin(const QDate& date, const QTime& time)
{
    const bool summer = date >= QDate(2023, 3, 26);
    return QDateTime(date, time, Qt::OffsetFromUTC, summer ? 7200 : 3600);
}

QString identifier(const QString& kind, const QDateTime& moment)
{
    return taskId + '_' + kind + '_' + QString::number(moment.toMSecsSinceEpoch());
}

QVariantMap dueReminder(const QDateTime& due, const QString& name = QStringLiteral("Pay rent"))
{
    return {{"ID", taskId}, {"NAME", name}, {"DUEDATE", due}};
}

QString schedulePath()
{
    return dataFilePath(QLatin1String(NotificationManagerPrivate::fileName));
}
} // namespace

class NotificationManagerTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<PrivateSessionBus> m_bus;
    std::unique_ptr<NotificationService> m_service;
    std::unique_ptr<RepeatedTaskHelper> m_repeatedTasks;
    std::unique_ptr<NotificationManager> m_manager;
    NotificationManagerPrivate* m_platform = nullptr;

    void startManager(const QDBusConnection& bus)
    {
        m_manager.reset();
        m_platform = new NotificationManagerPrivate(schedulePath(), new DesktopNotifications(bus));
        m_manager = std::make_unique<NotificationManager>(m_platform, m_repeatedTasks.get());
    }

    void startManager() { startManager(QDBusConnection::connectToBus(m_bus->address(), clientConnection)); }

    // Lets every call and signal in flight on the bus arrive.
    void settle() { QTest::qWait(200); }

private slots:
    void initTestCase()
    {
        m_bus = std::make_unique<PrivateSessionBus>();
        QVERIFY2(!m_bus->address().isEmpty(), "dbus-daemon did not start");
    }

    void init()
    {
        Clock::pin(now);
        m_service = std::make_unique<NotificationService>(m_bus->address());
        QVERIFY(m_service->isRegistered());
        m_repeatedTasks = std::make_unique<RepeatedTaskHelper>(nullptr);
        startManager();
    }

    void cleanup()
    {
        m_manager.reset();
        m_service.reset();
        QDBusConnection::disconnectFromBus(clientConnection);
        m_repeatedTasks->clearReminders();
        QFile::remove(schedulePath());
        Clock::unpin();
    }

    void identifierNamesTheWallClockMomentOfDelivery_data()
    {
        QTest::addColumn<QVariantMap>("taskInfo");
        QTest::addColumn<Type>("type");
        QTest::addColumn<QString>("expected");

        const QDateTime start = wallClock(QDate(2023, 3, 22), QTime(9, 30));
        const QDateTime due = wallClock(QDate(2023, 3, 26), QTime(10, 0));
        QTest::newRow("start, at the time")
            << QVariantMap{{"ID", taskId}, {"NAME", "Call"}, {"STARTDATE", start}}
            << NotificationManager::AtTimeOfEvent
            << identifier("STARTDATE", berlin(QDate(2023, 3, 22), QTime(9, 30)));
        QTest::newRow("due, 3 hours before, over the change")
            << dueReminder(due.addSecs(3600)) << NotificationManager::ThreeHours
            << identifier("DUEDATE", berlin(QDate(2023, 3, 26), QTime(8, 0)));
        QTest::newRow("due, a day before the change keeps the hour")
            << dueReminder(due) << NotificationManager::Day
            << identifier("DUEDATE", berlin(QDate(2023, 3, 25), QTime(10, 0)));
        QTest::newRow("no name") << dueReminder(due, QString()) << NotificationManager::Hour << QString();
        QTest::newRow("no date") << dueReminder(QDateTime()) << NotificationManager::Hour << QString();
    }

    void identifierNamesTheWallClockMomentOfDelivery()
    {
        QFETCH(QVariantMap, taskInfo);
        QFETCH(Type, type);
        QFETCH(QString, expected);

        m_manager->scheduleNotification(taskInfo, type);

        QCOMPARE(m_manager->notificationIds(), expected.isEmpty() ? QStringList() : QStringList{expected});
    }

    void matchIsExactForOneReminderAndBySubstringForATask()
    {
        const QDateTime due = wallClock(QDate(2023, 3, 22), QTime(18, 0));
        m_manager->scheduleNotification(dueReminder(due), NotificationManager::FiveMinutes);
        m_manager->scheduleNotification(dueReminder(due), NotificationManager::Hour);
        m_manager->scheduleNotification({{"ID", "other"}, {"NAME", "Other"}, {"DUEDATE", due}},
                                        NotificationManager::Hour);

        QVERIFY(m_manager->hasScheduledNotification(dueReminder(due), NotificationManager::Hour));
        QVERIFY(!m_manager->hasScheduledNotification(dueReminder(due), NotificationManager::FifteenMinutes));
        QVERIFY(m_manager->hasScheduledNotifications(taskId.left(8)));

        m_manager->removeAllNotificationsById(taskId.left(8));
        QCOMPARE(m_manager->notificationIds().size(), 1);
    }

    void rescheduleMovesRemindersAndDropsThosePast_data()
    {
        QTest::addColumn<bool>("scheduled");
        QTest::addColumn<bool>("wished");
        QTest::addColumn<QDateTime>("newDue");
        QTest::addColumn<QStringList>("expected");

        const QDateTime later = wallClock(QDate(2023, 3, 24), QTime(18, 0));
        const QString laterId = identifier("DUEDATE", berlin(QDate(2023, 3, 24), QTime(17, 0)));
        QTest::newRow("scheduled, moved later") << true << false << later << QStringList{laterId};
        QTest::newRow("scheduled, moved into the past")
            << true << false << wallClock(QDate(2023, 3, 20), QTime(12, 30)) << QStringList();
        QTest::newRow("repeating, wish kept") << false << true << later << QStringList{laterId};
    }

    void rescheduleMovesRemindersAndDropsThosePast()
    {
        QFETCH(bool, scheduled);
        QFETCH(bool, wished);
        QFETCH(QDateTime, newDue);
        const QDateTime oldDue = wallClock(QDate(2023, 3, 22), QTime(18, 0));
        if (scheduled)
            m_manager->scheduleNotification(dueReminder(oldDue), NotificationManager::Hour);
        if (wished)
            m_repeatedTasks->setDueDateReminder(taskId, NotificationManager::Hour);

        m_manager->rescheduleReminders(RecordBuilder::task("Pay rent").withId(taskId).dueAt(oldDue),
                                       RecordBuilder::task("Pay rent").withId(taskId).dueAt(newDue));

        QTEST(m_manager->notificationIds(), "expected");
    }

    void deliveredReminderSnoozesOrOpensItsTask_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("windowRequests");
        QTest::addColumn<QStringList>("requestedTasks");
        QTest::addColumn<QStringList>("scheduledAfter");

        const QString id = taskId + "_DUEDATE_1679310000000";
        QTest::newRow("snooze") << id << "snooze" << 0 << QStringList() << QStringList{id};
        QTest::newRow("click") << id << "default" << 1 << QStringList{taskId} << QStringList();
        QTest::newRow("click, identifier of no task") << "stray"
                                                      << "default" << 1 << QStringList() << QStringList();
    }

    void deliveredReminderSnoozesOrOpensItsTask()
    {
        QFETCH(QString, identifier);
        QFETCH(QString, action);
        QSignalSpy windowRequests(m_manager.get(), &NotificationManager::mainWindowRequested);
        QSignalSpy taskRequests(m_manager.get(), &NotificationManager::taskRequested);
        m_platform->scheduleNotification(
            {identifier, "Pay rent", "Task is overdue", now.addSecs(-60), "Snooze"});

        QTRY_COMPARE(m_service->notifications().size(), 1);
        const NotificationService::Notification shown = m_service->notifications().first();
        QCOMPARE(shown.fields, (QStringList{"Norvel", "Pay rent", "Task is overdue", "default", "Pay rent",
                                            "snooze", "Snooze"}));
        QCOMPARE(m_manager->notificationCount(), 0);

        // Another program's notification on the same service must not count as ours.
        QVERIFY(m_service->invokeAction(shown.id + 1, "default"));
        QVERIFY(m_service->invokeAction(shown.id, action));
        settle();

        QTEST(windowRequests.count(), "windowRequests");
        QStringList requested;
        for (const QVariantList& request : qAsConst(taskRequests))
            requested.append(request.first().toString());
        QTEST(requested, "requestedTasks");
        QTEST(m_manager->notificationIds(), "scheduledAfter");
        if (action == "snooze") {
            const UserNotification snoozed = m_platform->scheduledNotifications().first();
            QCOMPARE(snoozed.deliveryDateTime, now.addSecs(NotificationManager::snoozeSeconds));
            QCOMPARE(snoozed.informativeText, QStringLiteral("Don't forget about this task"));
        }
    }

    void missedRemindersComeOnceAtTheNextStartUnlessADayLate()
    {
        LogCapture log;
        m_manager->scheduleNotification(dueReminder(wallClock(QDate(2023, 3, 20), QTime(12, 10))),
                                        NotificationManager::AtTimeOfEvent);
        m_manager->scheduleNotification(dueReminder(wallClock(QDate(2023, 3, 22), QTime(12, 0)), "Late"),
                                        NotificationManager::AtTimeOfEvent);
        m_manager.reset();

        Clock::pin(now.addDays(2).addSecs(3600));
        startManager();

        QTRY_COMPARE(m_service->notifications().size(), 1);
        QCOMPARE(m_service->notifications().first().fields.at(1), QStringLiteral("Late"));
        QCOMPARE(m_manager->notificationCount(), 0);
        QCOMPARE(log.messages("INFO").filter("more than a day late").size(), 1);

        startManager();
        settle();
        QCOMPARE(m_service->notifications().size(), 1);
    }

    void wakingMeasuresTheWaitAnew()
    {
        m_manager->scheduleNotification(dueReminder(wallClock(QDate(2023, 3, 20), QTime(13, 0))),
                                        NotificationManager::AtTimeOfEvent);
        settle();
        QCOMPARE(m_service->notifications().size(), 0);

        Clock::pin(now.addSecs(2 * 3600));
        m_manager->handleComputerWokeUp();

        QTRY_COMPARE(m_service->notifications().size(), 1);
    }

    void withoutServiceDeliveryIsSkippedAndSchedulingWorks_data()
    {
        QTest::addColumn<bool>("hasBus");
        QTest::newRow("no session bus") << false;
        QTest::newRow("no notification service") << true;
    }

    void withoutServiceDeliveryIsSkippedAndSchedulingWorks()
    {
        QFETCH(bool, hasBus);
        LogCapture log;
        m_service.reset();
        startManager(hasBus ? QDBusConnection::connectToBus(m_bus->address(), clientConnection)
                            : QDBusConnection(QStringLiteral("no-such-connection")));
        m_manager->scheduleNotification(dueReminder(wallClock(QDate(2023, 3, 21), QTime(9, 0))),
                                        NotificationManager::Hour);
        m_manager->scheduleNotification(dueReminder(wallClock(QDate(2023, 3, 20), QTime(11, 0))),
                                        NotificationManager::AtTimeOfEvent);
        QTRY_COMPARE(log.messages("WARN").filter("Reminder delivery skipped").size(), 1);
        QCOMPARE(m_manager->notificationCount(), 1);
    }
};

NORVEL_TEST_MAIN(NotificationManagerTest)
#include "notificationmanagertest.moc"

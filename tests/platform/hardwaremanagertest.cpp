#include "platform/hardwaremanager.h"
#include "testlib/logcapture.h"
#include "testlib/privatesessionbus.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace {
const QString logindService = QStringLiteral("org.freedesktop.login1");
const QString networkManagerService = QStringLiteral("org.freedesktop.NetworkManager");

QStringList qtWarnings;

void recordQtWarnings(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type != QtDebugMsg && type != QtInfoMsg)
        qtWarnings.append(message);
}
} // namespace

class HardwareManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();
    void wakeAfterAnnouncedSleepGivesOneWakeUp_data();
    void wakeAfterAnnouncedSleepGivesOneWakeUp();
    void onlyChangesIntoOnlineAnnounceTheConnection();
    void withoutBusNothingIsAnnouncedAndNothingComplains();

private:
    // Sends from a connection that owns the given service name, as logind and NetworkManager would.
    void sendSignal(const QString& service, const QString& path, const QString& interface,
                    const QString& name, const QVariant& argument);
    // Lets every signal sent so far arrive: a ping to the sender goes through the bus after them.
    void waitForBus();

    std::unique_ptr<PrivateSessionBus> m_bus;
    std::unique_ptr<HardwareManager> m_manager;
};

void HardwareManagerTest::initTestCase()
{
    m_bus = std::make_unique<PrivateSessionBus>();
    QVERIFY2(!m_bus->address().isEmpty(), "dbus-daemon did not start");
    for (const QString& service : {logindService, networkManagerService}) {
        QDBusConnection sender = QDBusConnection::connectToBus(m_bus->address(), service);
        QVERIFY(sender.isConnected());
        QVERIFY(sender.registerService(service));
    }
}

void HardwareManagerTest::init()
{
    m_manager = std::make_unique<HardwareManager>(
        QDBusConnection::connectToBus(m_bus->address(), QStringLiteral("hardware-listener")));
}

void HardwareManagerTest::cleanup()
{
    m_manager.reset();
    QDBusConnection::disconnectFromBus(QStringLiteral("hardware-listener"));
}

void HardwareManagerTest::cleanupTestCase()
{
    QDBusConnection::disconnectFromBus(logindService);
    QDBusConnection::disconnectFromBus(networkManagerService);
    m_bus.reset();
}

void HardwareManagerTest::sendSignal(const QString& service, const QString& path, const QString& interface,
                                     const QString& name, const QVariant& argument)
{
    QDBusMessage message = QDBusMessage::createSignal(path, interface, name);
    message << argument;
    QVERIFY(QDBusConnection(service).send(message));
}

void HardwareManagerTest::waitForBus()
{
    QDBusConnection listener(QStringLiteral("hardware-listener"));
    for (const QString& service : {logindService, networkManagerService}) {
        const QDBusMessage ping = QDBusMessage::createMethodCall(service, QStringLiteral("/"),
                                                                 QStringLiteral("org.freedesktop.DBus.Peer"),
                                                                 QStringLiteral("Ping"));
        QCOMPARE(listener.call(ping).type(), QDBusMessage::ReplyMessage);
    }
    QCoreApplication::processEvents();
}

void HardwareManagerTest::wakeAfterAnnouncedSleepGivesOneWakeUp_data()
{
    QTest::addColumn<QList<bool>>("announcements");
    QTest::addColumn<int>("wakeUps");

    QTest::newRow("sleep, wake") << QList<bool>{true, false} << 1;
    QTest::newRow("wake without sleep") << QList<bool>{false} << 0;
    QTest::newRow("sleep, wake, repeated wake") << QList<bool>{true, false, false} << 1;
    QTest::newRow("two nights") << QList<bool>{true, false, true, false} << 2;
}

void HardwareManagerTest::wakeAfterAnnouncedSleepGivesOneWakeUp()
{
    QFETCH(QList<bool>, announcements);
    QFETCH(int, wakeUps);
    QSignalSpy woke(m_manager.get(), &HardwareManager::computerWokeUp);
    QSignalSpy online(m_manager.get(), &HardwareManager::internetConnectionOnline);

    for (bool goingToSleep : announcements) {
        sendSignal(logindService, QStringLiteral("/org/freedesktop/login1"),
                   QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"),
                   goingToSleep);
    }
    waitForBus();

    QCOMPARE(woke.count(), wakeUps);
    QCOMPARE(online.count(), 0);
}

void HardwareManagerTest::onlyChangesIntoOnlineAnnounceTheConnection()
{
    QSignalSpy online(m_manager.get(), &HardwareManager::internetConnectionOnline);

    // Connecting, online, online again, site-only, online.
    for (uint state : {40u, 70u, 70u, 60u, 70u}) {
        sendSignal(networkManagerService, QStringLiteral("/org/freedesktop/NetworkManager"),
                   QStringLiteral("org.freedesktop.NetworkManager"), QStringLiteral("StateChanged"),
                   QVariant::fromValue(state));
    }
    waitForBus();

    QCOMPARE(online.count(), 2);
}

void HardwareManagerTest::withoutBusNothingIsAnnouncedAndNothingComplains()
{
    LogCapture log;
    qtWarnings.clear();
    const QtMessageHandler previous = qInstallMessageHandler(recordQtWarnings);

    HardwareManager manager(QDBusConnection::connectToBus(QStringLiteral("unix:path=/nonexistent/bus"),
                                                          QStringLiteral("no-bus")));
    QSignalSpy woke(&manager, &HardwareManager::computerWokeUp);
    QSignalSpy online(&manager, &HardwareManager::internetConnectionOnline);
    QTest::qWait(50);

    qInstallMessageHandler(previous);
    QDBusConnection::disconnectFromBus(QStringLiteral("no-bus"));
    QCOMPARE(woke.count(), 0);
    QCOMPARE(online.count(), 0);
    QCOMPARE(qtWarnings, QStringList());
    QCOMPARE(log.messages(QStringLiteral("WARN")) + log.messages(QStringLiteral("ERROR")), QStringList());
}

NORVEL_TEST_MAIN(HardwareManagerTest)
#include "hardwaremanagertest.moc"

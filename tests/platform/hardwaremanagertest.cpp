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

// Sent from a connection that owns the service name, as logind and NetworkManager would: a bool is
// logind's sleep announcement, a number NetworkManager's new state.
bool announce(const QVariant& argument)
{
    const bool sleep = argument.userType() == QMetaType::Bool;
    QDBusMessage message =
        sleep ? QDBusMessage::createSignal("/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                                           "PrepareForSleep")
              : QDBusMessage::createSignal("/org/freedesktop/NetworkManager",
                                           "org.freedesktop.NetworkManager", "StateChanged");
    return QDBusConnection(sleep ? logindService : networkManagerService).send(message << argument);
}
} // namespace

class HardwareManagerTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<PrivateSessionBus> m_bus;

private slots:
    void initTestCase()
    {
        m_bus = std::make_unique<PrivateSessionBus>();
        QVERIFY2(!m_bus->address().isEmpty(), "dbus-daemon did not start");
        for (const QString& service : {logindService, networkManagerService})
            QVERIFY(QDBusConnection::connectToBus(m_bus->address(), service).registerService(service));
    }

    void cleanupTestCase()
    {
        QDBusConnection::disconnectFromBus(logindService);
        QDBusConnection::disconnectFromBus(networkManagerService);
        m_bus.reset();
    }

    void eachWakeAndEachChangeIntoOnlineIsAnnouncedOnce_data()
    {
        QTest::addColumn<QVariantList>("announcements");
        QTest::addColumn<int>("wakeUps");
        QTest::addColumn<int>("onlines");

        QTest::newRow("sleep, wake") << QVariantList{true, false} << 1 << 0;
        QTest::newRow("wake without sleep") << QVariantList{false} << 0 << 0;
        QTest::newRow("sleep, wake, repeated wake") << QVariantList{true, false, false} << 1 << 0;
        QTest::newRow("two nights") << QVariantList{true, false, true, false} << 2 << 0;
        QTest::newRow("connecting, online, online again, site-only, online")
            << QVariantList{40u, 70u, 70u, 60u, 70u} << 0 << 2;
    }

    void eachWakeAndEachChangeIntoOnlineIsAnnouncedOnce()
    {
        QFETCH(QVariantList, announcements);
        const QString listener = QStringLiteral("hardware-listener");
        HardwareManager manager(QDBusConnection::connectToBus(m_bus->address(), listener));
        QSignalSpy woke(&manager, &HardwareManager::computerWokeUp);
        QSignalSpy online(&manager, &HardwareManager::internetConnectionOnline);

        for (const QVariant& announcement : announcements)
            QVERIFY(announce(announcement));
        // A ping to each sender goes through the bus after the signals it sent, so they have all arrived.
        for (const QString& service : {logindService, networkManagerService}) {
            const QDBusMessage ping =
                QDBusMessage::createMethodCall(service, "/", "org.freedesktop.DBus.Peer", "Ping");
            QCOMPARE(QDBusConnection(listener).call(ping).type(), QDBusMessage::ReplyMessage);
        }
        QCoreApplication::processEvents();

        QTEST(woke.count(), "wakeUps");
        QTEST(online.count(), "onlines");
        QDBusConnection::disconnectFromBus(listener);
    }

    void withoutBusNothingIsAnnouncedAndNothingComplains()
    {
        LogCapture log;

        HardwareManager manager(QDBusConnection::connectToBus("unix:path=/nonexistent/bus", "no-bus"));
        QSignalSpy woke(&manager, &HardwareManager::computerWokeUp);
        QSignalSpy online(&manager, &HardwareManager::internetConnectionOnline);
        QTest::qWait(50);

        QDBusConnection::disconnectFromBus("no-bus");
        QCOMPARE(woke.count() + online.count(), 0);
        QCOMPARE(log.messages("WARN") + log.messages("ERROR"), QStringList());
    }
};

NORVEL_TEST_MAIN(HardwareManagerTest)
#include "hardwaremanagertest.moc"

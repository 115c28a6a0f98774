#include "platform/launcherbadge.h"
#include "testlib/launcherentrylistener.h"
#include "testlib/privatesessionbus.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QDBusConnection>
#include <QtTest>

#include <memory>

class LauncherBadgeTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void countAndVisibilityReachListeners_data();
    void countAndVisibilityReachListeners();
    void withoutBusNothingIsSent();

private:
    std::unique_ptr<PrivateSessionBus> m_bus;
};

void LauncherBadgeTest::initTestCase()
{
    m_bus = std::make_unique<PrivateSessionBus>();
    QVERIFY2(!m_bus->address().isEmpty(), "dbus-daemon did not start");
}

void LauncherBadgeTest::cleanupTestCase()
{
    QDBusConnection::disconnectFromBus(QStringLiteral("badge-sender"));
    m_bus.reset();
}

void LauncherBadgeTest::countAndVisibilityReachListeners_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("visible");

    QTest::newRow("three") << 3 << true;
    QTest::newRow("zero") << 0 << false;
}

void LauncherBadgeTest::countAndVisibilityReachListeners()
{
    QFETCH(int, count);
    QFETCH(bool, visible);
    LauncherEntryListener listener(m_bus->address());
    QVERIFY(listener.isListening());
    QSignalSpy updates(&listener, &LauncherEntryListener::updated);
    LauncherBadge badge(QDBusConnection::connectToBus(m_bus->address(), QStringLiteral("badge-sender")));

    QVERIFY(badge.setCount(count));

    QVERIFY(updates.wait());
    QCOMPARE(updates.count(), 1);
    QCOMPARE(updates.at(0).at(0).toString(), QStringLiteral("application://norvel.desktop"));
    const QVariantMap properties = updates.at(0).at(1).toMap();
    QCOMPARE(properties.size(), 2);
    QCOMPARE(properties.value(QStringLiteral("count")).userType(), int(QMetaType::LongLong));
    QCOMPARE(properties.value(QStringLiteral("count")), QVariant::fromValue<qint64>(count));
    QCOMPARE(properties.value(QStringLiteral("count-visible")), QVariant(visible));
}

void LauncherBadgeTest::withoutBusNothingIsSent()
{
    LauncherBadge badge(QDBusConnection(QStringLiteral("no-such-connection")));

    QVERIFY(!badge.setCount(3));
}

NORVEL_TEST_MAIN(LauncherBadgeTest)
#include "launcherbadgetest.moc"

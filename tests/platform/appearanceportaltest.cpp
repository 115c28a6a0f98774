#include "platform/appearanceportal.h"
#include "testlib/fakeappearanceportal.h"
#include "testlib/privatesessionbus.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QDBusConnection>
#include <QSignalSpy>
#include <QtTest>

class AppearancePortalTest : public QObject
{
    Q_OBJECT

private slots:
    void withoutPortalTheDesktopIsLight();
    void readsAndFollowsTheColorScheme();

private:
    QDBusConnection connect(const QString& name);

    PrivateSessionBus m_bus;
};

QDBusConnection AppearancePortalTest::connect(const QString& name)
{
    return QDBusConnection::connectToBus(m_bus.address(), name);
}

void AppearancePortalTest::withoutPortalTheDesktopIsLight()
{
    AppearancePortal portal(connect(QStringLiteral("empty")));
    QVERIFY(!portal.isDark());
}

void AppearancePortalTest::readsAndFollowsTheColorScheme()
{
    FakeAppearancePortal desktop(connect(QStringLiteral("desktop")), AppearancePortal::preferDark);
    AppearancePortal portal(connect(QStringLiteral("program")));
    QVERIFY(portal.isDark());
    QSignalSpy changes(&portal, &AppearancePortal::darkChanged);

    desktop.changeColorScheme(0);
    QTRY_COMPARE(changes.count(), 1);
    QCOMPARE(changes.constFirst().constFirst().toBool(), false);
    QVERIFY(!portal.isDark());

    // The same value again is no change.
    desktop.changeColorScheme(2);
    desktop.changeColorScheme(AppearancePortal::preferDark);
    QTRY_COMPARE(changes.count(), 2);
    QVERIFY(portal.isDark());
}

NORVEL_TEST_MAIN(AppearancePortalTest)
#include "appearanceportaltest.moc"

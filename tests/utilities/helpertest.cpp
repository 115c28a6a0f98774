#include "utilities/helper.h"
#include "core/clock.h"
#include "testlib/launcherentrylistener.h"
#include "testlib/privatesessionbus.h"
#include "testlib/recordbuilder.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QClipboard>
#include <QJSEngine>
#include <QPointer>
#include <QTimer>
#include <QtTest>

#include <memory>

class HelperTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void toUtcDateTimeKeepsWallClockFields_data();
    void toUtcDateTimeKeepsWallClockFields();
    void toUtcStringNamesNearDaysAndFormatsOthers_data();
    void toUtcStringNamesNearDaysAndFormatsOthers();
    void toUtcStringOfInvalidValueIsEmpty();

    void recentListPutsNewProjectFirst();
    void recentListKeepsTenEntries();
    void repeatedProjectMovesToFrontWithItsOldMap();

    void temporaryTimerDeletesItselfAfterFiring();
    void temporaryTimerOutlivesScriptGarbageCollection();
    void clipboardHasTextFollowsClipboard();
    void touchScreenMakesTouchDeviceAvailable();
    void badgeCountGoesOutOnSessionBus();

private:
    static QVariantList projects(int count);

    std::unique_ptr<PrivateSessionBus> m_bus;
};

void HelperTest::initTestCase()
{
    // The helper publishes on the session bus it finds at its creation: point it at a private one.
    m_bus = std::make_unique<PrivateSessionBus>();
    QVERIFY2(!m_bus->address().isEmpty(), "dbus-daemon did not start");
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus->address().toUtf8());
}

void HelperTest::cleanup()
{
    Clock::unpin();
}

QVariantList HelperTest::projects(int count)
{
    QVariantList list;
    for (int index = 0; index < count; ++index) {
        const QString number = QString::number(index);
        list << QVariant(RecordBuilder::project(QStringLiteral("Project ") + number)
                             .withId(QStringLiteral("project-") + number)
                             .build());
    }
    return list;
}

void HelperTest::toUtcDateTimeKeepsWallClockFields_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QTime>("time");

    QTest::newRow("winter") << QVariant(wallClock(QDate(2024, 1, 15), QTime(18, 7))) << QDate(2024, 1, 15)
                            << QTime(18, 7);
    QTest::newRow("summer") << QVariant(wallClock(QDate(2024, 7, 1), QTime(9, 30))) << QDate(2024, 7, 1)
                            << QTime(9, 30);
    QTest::newRow("late evening stays on its day")
        << QVariant(wallClock(QDate(2024, 3, 5), QTime(23, 30))) << QDate(2024, 3, 5) << QTime(23, 30);
    // What a JavaScript Date built with Date.UTC(2024, 6, 1, 18, 30) arrives as.
    QTest::newRow("value given in local time")
        << QVariant(QDateTime(QDate(2024, 7, 1), QTime(20, 30), Qt::LocalTime)) << QDate(2024, 7, 1)
        << QTime(18, 30);
}

void HelperTest::toUtcDateTimeKeepsWallClockFields()
{
    QFETCH(QVariant, stored);
    QFETCH(QDate, date);
    QFETCH(QTime, time);

    const QDateTime shown = Helper::instance()->toUtcDateTime(stored);

    QCOMPARE(shown.timeSpec(), Qt::LocalTime);
    QCOMPARE(shown.date(), date);
    QCOMPARE(shown.time(), time);
}

void HelperTest::toUtcStringNamesNearDaysAndFormatsOthers_data()
{
    QTest::addColumn<QDateTime>("now");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QDateTime>("stored");
    QTest::addColumn<QString>("text");

    const QDateTime morning(QDate(2024, 3, 5), QTime(10, 0), Qt::LocalTime);
    // Still the 4th in UTC: the day must come from the local clock.
    const QDateTime afterMidnight(QDate(2024, 3, 5), QTime(0, 30), Qt::LocalTime);
    const QString english = QStringLiteral("en");
    const QString russian = QStringLiteral("ru");

    QTest::newRow("en today") << morning << english << wallClock(QDate(2024, 3, 5), QTime(18, 7))
                              << QStringLiteral("Today, 6:07 PM");
    QTest::newRow("en tomorrow") << morning << english << wallClock(QDate(2024, 3, 6), QTime(9, 5))
                                 << QStringLiteral("Tomorrow, 9:05 AM");
    QTest::newRow("en yesterday") << morning << english << wallClock(QDate(2024, 3, 4), QTime(0, 0))
                                  << QStringLiteral("Yesterday, 12:00 AM");
    QTest::newRow("en other day") << morning << english << wallClock(QDate(2024, 3, 15), QTime(18, 7))
                                  << QStringLiteral("March 15, 2024, 6:07 PM");
    QTest::newRow("en two days ago") << morning << english << wallClock(QDate(2024, 3, 3), QTime(12, 0))
                                     << QStringLiteral("March 3, 2024, 12:00 PM");
    QTest::newRow("en today after local midnight")
        << afterMidnight << english << wallClock(QDate(2024, 3, 5), QTime(0, 10))
        << QStringLiteral("Today, 12:10 AM");
    QTest::newRow("ru today") << morning << russian << wallClock(QDate(2024, 3, 5), QTime(18, 7))
                              << QStringLiteral("Today 18:07");
    QTest::newRow("ru tomorrow") << morning << russian << wallClock(QDate(2024, 3, 6), QTime(9, 5))
                                 << QStringLiteral("Tomorrow 9:05");
    QTest::newRow("ru yesterday") << morning << russian << wallClock(QDate(2024, 3, 4), QTime(0, 0))
                                  << QStringLiteral("Yesterday 0:00");
    QTest::newRow("ru other day") << morning << russian << wallClock(QDate(2024, 3, 15), QTime(18, 7))
                                  << QStringLiteral("15 марта, 2024 18:07");
    QTest::newRow("ru other month") << morning << russian << wallClock(QDate(2024, 5, 1), QTime(7, 45))
                                    << QStringLiteral("1 мая, 2024 7:45");
    QTest::newRow("other language reads English")
        << morning << QStringLiteral("de") << wallClock(QDate(2024, 3, 15), QTime(18, 7))
        << QStringLiteral("March 15, 2024, 6:07 PM");
}

void HelperTest::toUtcStringNamesNearDaysAndFormatsOthers()
{
    QFETCH(QDateTime, now);
    QFETCH(QString, language);
    QFETCH(QDateTime, stored);
    QFETCH(QString, text);
    Clock::pin(now);

    QCOMPARE(Helper::instance()->toUtcString(stored, language), text);
}

void HelperTest::toUtcStringOfInvalidValueIsEmpty()
{
    QCOMPARE(Helper::instance()->toUtcString(QVariant(), QStringLiteral("en")), QString());
    QCOMPARE(Helper::instance()->toUtcString(QVariant(QString()), QStringLiteral("ru")), QString());
}

void HelperTest::recentListPutsNewProjectFirst()
{
    const QVariantMap newProject =
        RecordBuilder::project(QStringLiteral("New")).withId(QStringLiteral("new"));

    const QVariantList recent = Helper::instance()->handleRecentProjectList(projects(3), newProject);

    QCOMPARE(recent, QVariantList{newProject} + projects(3));
}

void HelperTest::recentListKeepsTenEntries()
{
    const QVariantList ten = projects(10);
    const QVariantMap eleventh = RecordBuilder::project(QStringLiteral("New")).withId(QStringLiteral("new"));

    const QVariantList recent = Helper::instance()->handleRecentProjectList(ten, eleventh);

    QCOMPARE(recent.size(), 10);
    QCOMPARE(recent.first().toMap(), eleventh);
    QCOMPARE(recent.mid(1), ten.mid(0, 9));
}

void HelperTest::repeatedProjectMovesToFrontWithItsOldMap()
{
    const QVariantList list = projects(10);
    const QVariantMap renamed =
        RecordBuilder::project(QStringLiteral("Renamed")).withId(QStringLiteral("project-9"));

    const QVariantList recent = Helper::instance()->handleRecentProjectList(list, renamed);

    QVariantList expected{list.at(9)};
    expected += list.mid(0, 9);
    QCOMPARE(recent, expected);
}

void HelperTest::temporaryTimerDeletesItselfAfterFiring()
{
    const QVariant value = Helper::instance()->getTemporaryTimer();
    QPointer<QTimer> timer = qobject_cast<QTimer*>(value.value<QObject*>());
    QVERIFY(timer);
    QVERIFY(timer->isSingleShot());
    QSignalSpy fired(timer.data(), &QTimer::timeout);

    timer->start(0);

    QTRY_VERIFY(timer.isNull());
    QCOMPARE(fired.count(), 1);
}

void HelperTest::temporaryTimerOutlivesScriptGarbageCollection()
{
    QJSEngine engine;
    engine.globalObject().setProperty(QStringLiteral("helper"), engine.newQObject(Helper::instance()));
    QPointer<QTimer> timer =
        qobject_cast<QTimer*>(engine.evaluate(QStringLiteral("helper.getTemporaryTimer()")).toQObject());
    QVERIFY(timer);

    engine.collectGarbage();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(timer);

    timer->start(0);
    QTRY_VERIFY(timer.isNull());
}

void HelperTest::clipboardHasTextFollowsClipboard()
{
    Helper* helper = Helper::instance();
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    QTRY_VERIFY(!helper->clipboardHasText());
    QSignalSpy changed(helper, &Helper::clipboardHasTextChanged);

    clipboard->setText(QStringLiteral("copied"));
    QTRY_VERIFY(helper->clipboardHasText());
    QCOMPARE(changed.count(), 1);
    QCOMPARE(helper->property("clipboardHasText").toBool(), true);

    clipboard->setText(QStringLiteral("copied again"));
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 1);

    clipboard->clear();
    QTRY_VERIFY(!helper->clipboardHasText());
    QCOMPARE(changed.count(), 2);
}

void HelperTest::touchScreenMakesTouchDeviceAvailable()
{
    QVERIFY(!Helper::instance()->isTouchDeviceAvailable());

    QTest::createTouchDevice(QTouchDevice::TouchPad);
    QVERIFY(!Helper::instance()->isTouchDeviceAvailable());

    QTest::createTouchDevice(QTouchDevice::TouchScreen);
    QVERIFY(Helper::instance()->isTouchDeviceAvailable());
}

void HelperTest::badgeCountGoesOutOnSessionBus()
{
    LauncherEntryListener listener(m_bus->address());
    QVERIFY(listener.isListening());
    QSignalSpy updates(&listener, &LauncherEntryListener::updated);

    Helper::instance()->setBadgeLabelTaskCount(7);
    QVERIFY(updates.wait());
    Helper::instance()->setBadgeLabelTaskCount(0);
    QTRY_COMPARE(updates.count(), 2);

    const QVariantMap shown = updates.at(0).at(1).toMap();
    QCOMPARE(shown.value(QStringLiteral("count")), QVariant::fromValue<qint64>(7));
    QCOMPARE(shown.value(QStringLiteral("count-visible")), QVariant(true));
    const QVariantMap hidden = updates.at(1).at(1).toMap();
    QCOMPARE(hidden.value(QStringLiteral("count")), QVariant::fromValue<qint64>(0));
    QCOMPARE(hidden.value(QStringLiteral("count-visible")), QVariant(false));
}

NORVEL_TEST_MAIN(HelperTest)
#include "helpertest.moc"

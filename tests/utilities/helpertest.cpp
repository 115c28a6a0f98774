#include "utilities/helper.h"
#include "core/clock.h"
#include "core/settings.h"
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

namespace {
QVariantMap project(const QString& id)
{
    return RecordBuilder::project(QStringLiteral("Project ") + id).withId(id);
}

QVariantList projects(int count)
{
    QVariantList list;
    for (int index = 0; index < count; ++index)
        list << project(QString::number(index));
    return list;
}
} // namespace

class HelperTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void toUtcDateTimeShowsWallClockAsLocalMoment();
    void toUtcStringNamesNearDaysAndFormatsOthers_data();
    void toUtcStringNamesNearDaysAndFormatsOthers();
    void recentListPutsLatestFirstAndKeepsTen_data();
    void recentListPutsLatestFirstAndKeepsTen();

    void temporaryTimerOutlivesScriptAndDeletesItselfAfterFiring();
    void clipboardHasTextFollowsClipboard();
    void touchScreenMakesTouchDeviceAvailable();
    void badgeCountGoesOutOnSessionBus();

private:
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

void HelperTest::toUtcDateTimeShowsWallClockAsLocalMoment()
{
    // What a JavaScript Date built with Date.UTC(2024, 6, 1, 23, 30) arrives as: 1:30 the next day, local.
    const QDateTime fromScript = wallClock(QDate(2024, 7, 1), QTime(23, 30)).toLocalTime();

    const QDateTime shown = Helper::instance()->toUtcDateTime(fromScript);

    QCOMPARE(shown, QDateTime(QDate(2024, 7, 1), QTime(23, 30), Qt::LocalTime));
}

void HelperTest::toUtcStringNamesNearDaysAndFormatsOthers_data()
{
    QTest::addColumn<QDateTime>("now");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QDateTime>("stored");
    QTest::addColumn<QString>("text");

    const QDateTime morning(QDate(2024, 3, 5), QTime(10, 0), Qt::LocalTime);
    const auto row = [&morning](const char* tag, const char* language, const QDateTime& stored,
                                const char* text) {
        QTest::newRow(tag) << morning << QString(language) << stored << QString::fromUtf8(text);
    };
    row("en today", "en", wallClock(QDate(2024, 3, 5), QTime(18, 7)), "Today, 6:07 PM");
    row("en tomorrow", "en", wallClock(QDate(2024, 3, 6), QTime(9, 5)), "Tomorrow, 9:05 AM");
    row("en yesterday", "en", wallClock(QDate(2024, 3, 4), QTime(0, 0)), "Yesterday, 12:00 AM");
    row("en two days ago", "en", wallClock(QDate(2024, 3, 3), QTime(12, 0)), "March 3, 2024, 12:00 PM");
    row("ru today", "ru", wallClock(QDate(2024, 3, 5), QTime(18, 7)), "Today 18:07");
    row("ru later day", "ru", wallClock(QDate(2024, 5, 1), QTime(7, 45)), "1 мая, 2024 7:45");
    row("other language reads English", "de", wallClock(QDate(2024, 3, 15), QTime(18, 7)),
        "March 15, 2024, 6:07 PM");
    row("no date", "en", QDateTime(), "");
    // Still the 4th in UTC: the day must come from the local clock.
    QTest::newRow("en today after local midnight")
        << QDateTime(QDate(2024, 3, 5), QTime(0, 30), Qt::LocalTime) << QStringLiteral("en")
        << wallClock(QDate(2024, 3, 5), QTime(0, 10)) << QStringLiteral("Today, 12:10 AM");
}

void HelperTest::toUtcStringNamesNearDaysAndFormatsOthers()
{
    QFETCH(QDateTime, now);
    QFETCH(QString, language);
    QFETCH(QDateTime, stored);
    QFETCH(QString, text);
    Clock::pin(now);
    Settings::instance()->setApplicationLanguage(language);

    QCOMPARE(Helper::instance()->toUtcString(stored), text);
}

void HelperTest::recentListPutsLatestFirstAndKeepsTen_data()
{
    QTest::addColumn<QVariantList>("list");
    QTest::addColumn<QVariantMap>("latest");
    QTest::addColumn<QVariantList>("recent");

    const QVariantMap eleventh = project(QStringLiteral("new"));
    QTest::newRow("eleventh drops the oldest")
        << projects(10) << eleventh << QVariantList{eleventh} + projects(9);
    QVariantMap renamed = project(QStringLiteral("1"));
    renamed.insert(QStringLiteral("NAME"), QStringLiteral("Renamed"));
    QTest::newRow("repeat moves its old entry to the front")
        << projects(3) << renamed << QVariantList{projects(3).at(1), projects(3).at(0), projects(3).at(2)};
}

void HelperTest::recentListPutsLatestFirstAndKeepsTen()
{
    QFETCH(QVariantList, list);
    QFETCH(QVariantMap, latest);
    QFETCH(QVariantList, recent);

    QCOMPARE(Helper::instance()->handleRecentProjectList(list, latest), recent);
}

void HelperTest::temporaryTimerOutlivesScriptAndDeletesItselfAfterFiring()
{
    QJSEngine engine;
    engine.globalObject().setProperty(QStringLiteral("helper"), engine.newQObject(Helper::instance()));
    QPointer<QTimer> timer =
        qobject_cast<QTimer*>(engine.evaluate(QStringLiteral("helper.getTemporaryTimer()")).toQObject());
    QVERIFY(timer);
    QVERIFY(timer->isSingleShot());

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
    clipboard->setText(QStringLiteral("copied again"));
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 1);

    clipboard->clear();
    QTRY_VERIFY(!helper->clipboardHasText());
    QCOMPARE(changed.count(), 2);
}

void HelperTest::touchScreenMakesTouchDeviceAvailable()
{
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
    QCOMPARE(updates.first().at(1).toMap().value(QStringLiteral("count")), QVariant::fromValue<qint64>(7));
}

NORVEL_TEST_MAIN(HelperTest)
#include "helpertest.moc"

#include "services/repetitionformathelper.h"
#include "core/clock.h"
#include "testlib/recordbuilder.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

namespace {
// Friday, 11:00 in UTC.
const QDateTime now(QDate(2026, 3, 6), QTime(12, 0), Qt::LocalTime);
const QLocale englishSystem(QLocale::English, QLocale::UnitedStates);

QDateTime at(int month, int day, int hour)
{
    return wallClock(QDate(2026, month, day), QTime(hour, 0));
}
} // namespace

class RepetitionFormatHelperTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void ruleReadsAsSentence_data();
    void ruleReadsAsSentence();
    void nearestDateTakesOneStep_data();
    void nearestDateTakesOneStep();
    void nextDateIsFirstAfterNow_data();
    void nextDateIsFirstAfterNow();
};

void RepetitionFormatHelperTest::init()
{
    Clock::pin(now);
}

void RepetitionFormatHelperTest::cleanup()
{
    Clock::unpin();
}

void RepetitionFormatHelperTest::ruleReadsAsSentence_data()
{
    QTest::addColumn<QString>("period");
    QTest::addColumn<QString>("text");

    QTest::newRow("daily") << "d;3"
                           << "Do every 3 days";
    QTest::newRow("monthly") << "m;1"
                             << "Do every 1 months";
    QTest::newRow("weekly on one day") << "w;1;7"
                                       << "Do every 1 weeks on Sunday";
    QTest::newRow("weekly on two days") << "w;2;2,4"
                                        << "Do every 2 weeks on Tuesday and Thursday";
    QTest::newRow("weekly on four days") << "w;1;1,3,5,6"
                                         << "Do every 1 weeks on Monday, Wednesday, Friday and Saturday";
    QTest::newRow("one field is no rule") << "d"
                                          << "";
    QTest::newRow("unknown kind") << "y;1"
                                  << "";
}

void RepetitionFormatHelperTest::ruleReadsAsSentence()
{
    QFETCH(QString, period);
    QFETCH(QString, text);

    QCOMPARE(RepetitionFormatHelper(englishSystem).formatRepetitionForPreview(period), text);
}

void RepetitionFormatHelperTest::nearestDateTakesOneStep_data()
{
    QTest::addColumn<QString>("period");
    QTest::addColumn<QDateTime>("date");
    QTest::addColumn<QDateTime>("next");

    QTest::newRow("next listed day") << "w;2;1,3" << at(3, 2, 10) << at(3, 4, 10);
    QTest::newRow("last listed day jumps the interval") << "w;2;1,3" << at(3, 4, 10) << at(3, 16, 10);
    QTest::newRow("weekday off the list") << "w;2;1,3" << at(3, 3, 10) << QDateTime();
    QTest::newRow("weeks without a list") << "w;3" << at(3, 4, 10) << at(3, 25, 10);
    QTest::newRow("month end is clamped") << "m;1" << at(1, 31, 10) << at(2, 28, 10);
    QTest::newRow("unknown kind") << "y;1" << at(3, 4, 10) << QDateTime();
}

void RepetitionFormatHelperTest::nearestDateTakesOneStep()
{
    QFETCH(QString, period);
    QFETCH(QDateTime, date);
    QFETCH(QDateTime, next);

    QCOMPARE(RepetitionFormatHelper::getNearestRepetitionDate(date, period), next);
}

void RepetitionFormatHelperTest::nextDateIsFirstAfterNow_data()
{
    QTest::addColumn<QString>("period");
    QTest::addColumn<QDateTime>("start");
    QTest::addColumn<QDateTime>("due");
    QTest::addColumn<QString>("text");

    QTest::newRow("daily, due hour passed")
        << "d;1" << at(3, 6, 7) << at(3, 6, 8) << "Tomorrow, between 7:00 AM and 8:00 AM";
    QTest::newRow("daily, due hour ahead still steps")
        << "d;1" << at(3, 6, 9) << at(3, 6, 18) << "Tomorrow, between 9:00 AM and 6:00 PM";
    QTest::newRow("walk from the past ends today")
        << "d;3" << at(2, 25, 9) << at(2, 25, 18) << "Today, between 9:00 AM and 6:00 PM";
    QTest::newRow("weekly with a list names the day")
        << "w;1;1,5" << at(3, 6, 9) << at(3, 6, 18) << "on Monday, 3/9/26, between 9:00 AM and 6:00 PM";
    QTest::newRow("weekly without a list")
        << "w;1" << at(3, 6, 9) << at(3, 6, 18) << "3/13/26, between 9:00 AM and 6:00 PM";
    QTest::newRow("monthly shows the stored dates")
        << "m;1" << at(3, 10, 9) << at(3, 10, 18) << "between 9:00 AM and 6:00 PM on Tuesday, March 10, 2026";
    QTest::newRow("due off the weekday list") << "w;1;1" << at(3, 3, 9) << at(3, 3, 18) << "";
    QTest::newRow("count of zero") << "d;0" << at(3, 6, 9) << at(3, 6, 18) << "";
}

void RepetitionFormatHelperTest::nextDateIsFirstAfterNow()
{
    QFETCH(QString, period);
    QFETCH(QDateTime, start);
    QFETCH(QDateTime, due);
    QFETCH(QString, text);

    QCOMPARE(RepetitionFormatHelper(englishSystem).formatNextDateForPreview(period, start, due), text);
}

NORVEL_TEST_MAIN(RepetitionFormatHelperTest)
#include "repetitionformathelpertest.moc"

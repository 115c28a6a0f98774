#include "sync/sortedlistinfo.h"
#include "core/clock.h"
#include "testlib/recordbuilder.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

class SortedListInfoTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void unsortedListReadsAsAscendingByTimestampGroupedByDate();
    void recordMadeWithNullDateIsStampedNowInUtc();
    void recordKeepsTheDateItIsGiven();
};

void SortedListInfoTest::cleanup()
{
    Clock::unpin();
}

void SortedListInfoTest::unsortedListReadsAsAscendingByTimestampGroupedByDate()
{
    const SortedListInfo info;

    QCOMPARE(info.sortingType, SortingNamespace::TimestampAscType);
    QVERIFY(info.orderHash.isEmpty());
    QVERIFY(info.groupByDate);
}

void SortedListInfoTest::recordMadeWithNullDateIsStampedNowInUtc()
{
    const QDateTime now = QDateTime(QDate(2024, 3, 5), QTime(18, 30), Qt::LocalTime);
    Clock::pin(now);

    const SortedListInfo info(SortingNamespace::ManualType, {{QStringLiteral("a"), 0}});

    QCOMPARE(info.lastChanged, now);
    QCOMPARE(info.lastChanged.timeSpec(), Qt::UTC);
    QCOMPARE(info.lastChanged.time(), QTime(17, 30));
}

void SortedListInfoTest::recordKeepsTheDateItIsGiven()
{
    Clock::pin(wallClock(QDate(2024, 3, 5)));
    const QDateTime changed = wallClock(QDate(2023, 1, 2), QTime(3, 4));

    const SortedListInfo info(SortingNamespace::AlphabeticalType, {}, changed, false);

    QCOMPARE(info.lastChanged, changed);
    QCOMPARE(info.sortingType, SortingNamespace::AlphabeticalType);
    QVERIFY(!info.groupByDate);
}

NORVEL_TEST_MAIN(SortedListInfoTest)

#include "sortedlistinfotest.moc"

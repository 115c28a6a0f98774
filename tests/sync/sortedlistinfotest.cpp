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
    void lastChangedIsNowInUtcUnlessGiven()
    {
        Clock::pin(QDateTime(QDate(2024, 3, 5), QTime(18, 30), Qt::LocalTime));
        const QDateTime given = wallClock(QDate(2023, 1, 2), QTime(3, 4));

        const SortedListInfo stamped(SortingNamespace::ManualType, {{"a", 0}});
        const SortedListInfo kept(SortingNamespace::AlphabeticalType, {}, given, false);

        Clock::unpin();
        QCOMPARE(stamped.lastChanged.timeSpec(), Qt::UTC);
        QCOMPARE(stamped.lastChanged, QDateTime(QDate(2024, 3, 5), QTime(17, 30), Qt::UTC));
        QCOMPARE(kept.lastChanged, given);
    }
};

NORVEL_TEST_MAIN(SortedListInfoTest)

#include "sortedlistinfotest.moc"

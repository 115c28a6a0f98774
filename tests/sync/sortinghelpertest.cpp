#include "sync/sortinghelper.h"
#include "testlib/recordbuilder.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

using SortingNamespace::SortingType;

Q_DECLARE_METATYPE(SortingNamespace::SortingType)

namespace {

QDateTime day(int dayOfMonth, int hour = 0)
{
    return wallClock(QDate(2024, 3, dayOfMonth), QTime(hour, 0));
}

// Two tasks alike in everything but their IDs, a before b.
RecordBuilder taskA()
{
    return RecordBuilder::task("Same").withId("a").withTimestamp(100);
}

RecordBuilder taskB()
{
    return RecordBuilder::task("Same").withId("b").withTimestamp(100);
}

} // namespace

class SortingHelperTest : public QObject
{
    Q_OBJECT

    void addColumns()
    {
        QTest::addColumn<QVariantMap>("left");
        QTest::addColumn<QVariantMap>("right");
        QTest::addColumn<SortingType>("sortingType");
        QTest::addColumn<bool>("groupByDate");
        QTest::addColumn<bool>("leftFirst");
    }

private slots:
    void namesSortTheSameInEveryInterfaceLanguage()
    {
        const QVariantMap latin = taskA().named("Zebra");
        const QVariantMap cyrillic = taskB().named(QString::fromUtf8("Дом"));
        QVERIFY(QCollator(QLocale(QLocale::Russian))
                    .compare(cyrillic.value("NAME").toString(), latin.value("NAME").toString()) < 0);

        QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia));
        const bool latinFirst =
            SortingHelper::compareBySortingType(latin, cyrillic, SortingNamespace::AlphabeticalType);
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));

        QVERIFY(latinFirst);
    }

    void comparisonsFollowTheirRules_data()
    {
        QTest::addColumn<QString>("comparison");
        addColumns();
        const auto row = [](const char* comparison, const char* name, const QVariantMap& left,
                            const QVariantMap& right, SortingType type, bool groupByDate, bool leftFirst) {
            QTest::addRow("%s: %s", comparison, name)
                << comparison << left << right << type << groupByDate << leftFirst;
        };
        const auto asc = SortingNamespace::TimestampAscType;
        const auto desc = SortingNamespace::TimestampDescType;
        const auto alphabetical = SortingNamespace::AlphabeticalType;
        const auto manual = SortingNamespace::ManualType;

        row("type", "ascending: older first", taskB().withTimestamp(50), taskA(), asc, false, true);
        row("type", "descending: newer first", taskB().withTimestamp(50), taskA(), desc, false, false);
        row("type", "time stamp as text compares as a number", taskB().with("TIMESTAMP", "99"),
            taskA().with("TIMESTAMP", 100), asc, false, true);
        row("type", "descending tie falls to ID", taskA(), taskB(), desc, false, true);
        row("type", "numeric collation: Task 2 before Task 10", taskB().named("Task 2"),
            taskA().named("Task 10"), alphabetical, false, true);
        row("type", "collation ignores case order of code points", taskB().named("apple"),
            taskA().named("Banana"), alphabetical, false, true);
        row("type", "manual falls to ID", taskB().withTimestamp(1), taskA(), manual, false, false);
        row("objects", "without grouping the dates do not count", taskB().withTimestamp(1),
            taskA().dueAt(day(1)), asc, false, true);
        row("objects", "a start date beats no date", taskB().startingAt(day(20)), taskA(), asc, true, true);
        row("objects", "an empty text is no date", taskB().with("DUE", QString()),
            taskA().startingAt(day(20)), asc, true, false);
        row("objects", "a due date beats a start date only", taskB().dueAt(day(25)),
            taskA().startingAt(day(1)), asc, true, true);
        row("objects", "one start missing, different due: earlier due first",
            taskB().startingAt(day(1)).dueAt(day(6)), taskA().dueAt(day(5)), asc, true, false);
        row("objects", "same due: earlier start first", taskB().startingAt(day(2)).dueAt(day(5)),
            taskA().startingAt(day(1)).dueAt(day(5)), asc, true, false);
        row("objects", "earlier due first, whatever the start", taskB().startingAt(day(4)).dueAt(day(5, 9)),
            taskA().startingAt(day(1)).dueAt(day(5, 10)), asc, true, true);
        row("deleted", "level on one side only: by name", taskA().named("Beta").withLevel(0),
            taskB().named("Alpha"), manual, false, false);
        row("deleted", "same name: by ID", taskA(), taskB(), manual, false, true);
    }

    // Each row is checked both ways round.
    void comparisonsFollowTheirRules()
    {
        QFETCH(QString, comparison);
        QFETCH(QVariantMap, left);
        QFETCH(QVariantMap, right);
        QFETCH(SortingType, sortingType);
        QFETCH(bool, groupByDate);
        QFETCH(bool, leftFirst);
        const auto compare = [&](const QVariantMap& first, const QVariantMap& second) {
            if (comparison == "type")
                return SortingHelper::compareBySortingType(first, second, sortingType);
            if (comparison == "objects")
                return SortingHelper::compareObjects(first, second, sortingType, groupByDate);
            return SortingHelper::compareDeletedObjects(first, second);
        };

        QCOMPARE(compare(left, right), leftFirst);
        QCOMPARE(compare(right, left), !leftFirst);
    }
};

NORVEL_TEST_MAIN(SortingHelperTest)

#include "sortinghelpertest.moc"

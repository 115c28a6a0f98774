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

RecordBuilder taskA()
{
    return RecordBuilder::task(QStringLiteral("Same")).withId(QStringLiteral("a")).withTimestamp(100);
}

RecordBuilder taskB()
{
    return RecordBuilder::task(QStringLiteral("Same")).withId(QStringLiteral("b")).withTimestamp(100);
}

} // namespace

class SortingHelperTest : public QObject
{
    Q_OBJECT

private slots:
    void namesSortTheSameInEveryInterfaceLanguage();
    void compareBySortingTypeOrdersByTheType_data();
    void compareBySortingTypeOrdersByTheType();
    void compareObjectsGroupsByDates_data();
    void compareObjectsGroupsByDates();
    void compareDeletedObjectsOrdersByTimeThenLevelThenName_data();
    void compareDeletedObjectsOrdersByTimeThenLevelThenName();
    void alphabeticalOrderSortsAListAsPeopleRead();

private:
    static void addColumns();
};

void SortingHelperTest::addColumns()
{
    QTest::addColumn<QVariantMap>("left");
    QTest::addColumn<QVariantMap>("right");
    QTest::addColumn<SortingType>("sortingType");
    QTest::addColumn<bool>("groupByDate");
    QTest::addColumn<bool>("leftFirst");
}

void SortingHelperTest::namesSortTheSameInEveryInterfaceLanguage()
{
    const QVariantMap latin = taskA().named(QStringLiteral("Zebra"));
    const QVariantMap cyrillic = taskB().named(QString::fromUtf8("Дом"));
    QVERIFY(QCollator(QLocale(QLocale::Russian))
                .compare(cyrillic.value(QStringLiteral("NAME")).toString(),
                         latin.value(QStringLiteral("NAME")).toString()) < 0);

    QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia));
    const bool latinFirst =
        SortingHelper::compareBySortingType(latin, cyrillic, SortingNamespace::AlphabeticalType);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));

    QVERIFY(latinFirst);
}

void SortingHelperTest::compareBySortingTypeOrdersByTheType_data()
{
    addColumns();
    QTest::newRow("ascending: older first") << taskB().withTimestamp(50).build() << taskA().build()
                                            << SortingNamespace::TimestampAscType << false << true;
    QTest::newRow("descending: newer first") << taskB().withTimestamp(50).build() << taskA().build()
                                             << SortingNamespace::TimestampDescType << false << false;
    QTest::newRow("time stamp as text compares as a number")
        << taskB().with(QStringLiteral("TIMESTAMP"), QStringLiteral("99")).build()
        << taskA().with(QStringLiteral("TIMESTAMP"), 100).build() << SortingNamespace::TimestampAscType
        << false << true;
    QTest::newRow("ascending tie falls to ID")
        << taskA().build() << taskB().build() << SortingNamespace::TimestampAscType << false << true;
    QTest::newRow("descending tie falls to ID")
        << taskA().build() << taskB().build() << SortingNamespace::TimestampDescType << false << true;
    QTest::newRow("numeric collation: Task 2 before Task 10")
        << taskB().named(QStringLiteral("Task 2")).build() << taskA().named(QStringLiteral("Task 10")).build()
        << SortingNamespace::AlphabeticalType << false << true;
    QTest::newRow("collation ignores case order of code points")
        << taskB().named(QStringLiteral("apple")).build() << taskA().named(QStringLiteral("Banana")).build()
        << SortingNamespace::AlphabeticalType << false << true;
    QTest::newRow("equal names fall to ID") << taskA().withTimestamp(900).build() << taskB().build()
                                            << SortingNamespace::AlphabeticalType << false << true;
    QTest::newRow("alphabetical ignores time stamps")
        << taskA().named(QStringLiteral("Zulu")).withTimestamp(1).build()
        << taskB().named(QStringLiteral("Alpha")).withTimestamp(2).build()
        << SortingNamespace::AlphabeticalType << false << false;
    QTest::newRow("manual falls to ID") << taskB().withTimestamp(1).build() << taskA().build()
                                        << SortingNamespace::ManualType << false << false;
}

void SortingHelperTest::compareBySortingTypeOrdersByTheType()
{
    QFETCH(QVariantMap, left);
    QFETCH(QVariantMap, right);
    QFETCH(SortingType, sortingType);
    QFETCH(bool, leftFirst);

    QCOMPARE(SortingHelper::compareBySortingType(left, right, sortingType), leftFirst);
    QCOMPARE(SortingHelper::compareBySortingType(right, left, sortingType), !leftFirst);
}

void SortingHelperTest::compareObjectsGroupsByDates_data()
{
    addColumns();
    const auto asc = SortingNamespace::TimestampAscType;
    QTest::newRow("lower state first, whatever the dates")
        << taskB().withState(0).build() << taskA().withState(2).dueAt(day(1)).build() << asc << true << true;
    QTest::newRow("without grouping the dates do not count")
        << taskB().withTimestamp(1).build() << taskA().dueAt(day(1)).build() << asc << false << true;
    QTest::newRow("a start date beats no date")
        << taskB().startingAt(day(20)).build() << taskA().build() << asc << true << true;
    QTest::newRow("an empty text is no date") << taskB().with(QStringLiteral("DUE"), QString()).build()
                                              << taskA().startingAt(day(20)).build() << asc << true << false;
    QTest::newRow("a due date beats a start date only")
        << taskB().dueAt(day(25)).build() << taskA().startingAt(day(1)).build() << asc << true << true;
    QTest::newRow("one start missing, same due: sorting type decides")
        << taskB().dueAt(day(5)).withTimestamp(10).build()
        << taskA().startingAt(day(1)).dueAt(day(5)).withTimestamp(20).build() << asc << true << true;
    QTest::newRow("one start missing, different due: earlier due first")
        << taskB().startingAt(day(1)).dueAt(day(6)).build() << taskA().dueAt(day(5)).build() << asc << true
        << false;
    QTest::newRow("same dates: sorting type decides")
        << taskB().startingAt(day(1)).dueAt(day(5)).withTimestamp(10).build()
        << taskA().startingAt(day(1)).dueAt(day(5)).withTimestamp(20).build() << asc << true << true;
    QTest::newRow("same dates, descending type")
        << taskB().startingAt(day(1)).dueAt(day(5)).withTimestamp(10).build()
        << taskA().startingAt(day(1)).dueAt(day(5)).withTimestamp(20).build()
        << SortingNamespace::TimestampDescType << true << false;
    QTest::newRow("same due: earlier start first")
        << taskB().startingAt(day(2)).dueAt(day(5)).build()
        << taskA().startingAt(day(1)).dueAt(day(5)).build() << asc << true << false;
    QTest::newRow("earlier due first, whatever the start")
        << taskB().startingAt(day(4)).dueAt(day(5, 9)).build()
        << taskA().startingAt(day(1)).dueAt(day(5, 10)).build() << asc << true << true;
    QTest::newRow("start dates only: earlier start first")
        << taskB().startingAt(day(3)).build() << taskA().startingAt(day(4)).build() << asc << true << true;
    QTest::newRow("no dates at all: sorting type decides")
        << taskB().withTimestamp(10).build() << taskA().build() << asc << true << true;
    QTest::newRow("all equal: ID decides") << taskA().dueAt(day(5)).build() << taskB().dueAt(day(5)).build()
                                           << SortingNamespace::AlphabeticalType << true << true;
}

void SortingHelperTest::compareObjectsGroupsByDates()
{
    QFETCH(QVariantMap, left);
    QFETCH(QVariantMap, right);
    QFETCH(SortingType, sortingType);
    QFETCH(bool, groupByDate);
    QFETCH(bool, leftFirst);

    QCOMPARE(SortingHelper::compareObjects(left, right, sortingType, groupByDate), leftFirst);
    QCOMPARE(SortingHelper::compareObjects(right, left, sortingType, groupByDate), !leftFirst);
}

void SortingHelperTest::compareDeletedObjectsOrdersByTimeThenLevelThenName_data()
{
    addColumns();
    const auto unused = SortingNamespace::ManualType;
    QTest::newRow("latest deletion first")
        << taskA().named(QStringLiteral("A")).withLevel(0).withTimestamp(100).build()
        << taskB().named(QStringLiteral("B")).withLevel(3).withTimestamp(200).build() << unused << false
        << false;
    QTest::newRow("same time: parent before child")
        << taskA().named(QStringLiteral("A")).withLevel(2).build()
        << taskB().named(QStringLiteral("B")).withLevel(1).build() << unused << false << false;
    QTest::newRow("same time and level: by name")
        << taskA().named(QStringLiteral("Task 10")).withLevel(1).build()
        << taskB().named(QStringLiteral("Task 2")).withLevel(1).build() << unused << false << false;
    QTest::newRow("level on one side only: by name")
        << taskA().named(QStringLiteral("Beta")).withLevel(0).build()
        << taskB().named(QStringLiteral("Alpha")).build() << unused << false << false;
    QTest::newRow("same name: by ID") << taskA().build() << taskB().build() << unused << false << true;
}

void SortingHelperTest::compareDeletedObjectsOrdersByTimeThenLevelThenName()
{
    QFETCH(QVariantMap, left);
    QFETCH(QVariantMap, right);
    QFETCH(bool, leftFirst);

    QCOMPARE(SortingHelper::compareDeletedObjects(left, right), leftFirst);
    QCOMPARE(SortingHelper::compareDeletedObjects(right, left), !leftFirst);
}

void SortingHelperTest::alphabeticalOrderSortsAListAsPeopleRead()
{
    QList<QVariantMap> tasks;
    int id = 0;
    for (const char* name : {"Task 10", "task 1", "Task 2", "Épicerie", "Zebra", "apple", "Task 2"})
        tasks.append(RecordBuilder::task(QString::fromUtf8(name)).withId(QString::number(id++)));

    std::sort(tasks.begin(), tasks.end(), [](const QVariantMap& left, const QVariantMap& right) {
        return SortingHelper::compareBySortingType(left, right, SortingNamespace::AlphabeticalType);
    });

    QStringList order;
    for (const QVariantMap& task : tasks)
        order << task.value(QStringLiteral("NAME")).toString() + QLatin1Char('#') +
                     task.value(QStringLiteral("ID")).toString();
    QCOMPARE(order,
             (QStringList{QStringLiteral("apple#5"), QString::fromUtf8("Épicerie#3"),
                          QStringLiteral("task 1#1"), QStringLiteral("Task 2#2"), QStringLiteral("Task 2#6"),
                          QStringLiteral("Task 10#0"), QStringLiteral("Zebra#4")}));
}

NORVEL_TEST_MAIN(SortingHelperTest)

#include "sortinghelpertest.moc"

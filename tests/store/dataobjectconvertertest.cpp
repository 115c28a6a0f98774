#include "store/dataobjectconverter.h"
#include "testlib/recordbuilder.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QRegularExpression>
#include <QtTest>

class DataObjectConverterTest : public QObject
{
    Q_OBJECT

private slots:
    void datePreparationKeepsOnlyDateTimes_data();
    void datePreparationKeepsOnlyDateTimes();
    void sqlValuesAreNumbersOrNonNullText_data();
    void sqlValuesAreNumbersOrNonNullText();
    void unixTimeOutsideUnsignedRangeIsAllOnes_data();
    void unixTimeOutsideUnsignedRangeIsAllOnes();
    void newIdIsLowerCaseGuidWithoutBraces();
};

void DataObjectConverterTest::datePreparationKeepsOnlyDateTimes_data()
{
    QTest::addColumn<QVariant>("start");
    QTest::addColumn<QVariant>("expected");

    const QDateTime moment = wallClock(QDate(2024, 3, 5), QTime(18, 0));
    QTest::newRow("date-time becomes seconds")
        << QVariant(moment) << QVariant(uint(moment.toSecsSinceEpoch()));
    QTest::newRow("unix epoch becomes 0")
        << QVariant(QDateTime::fromSecsSinceEpoch(0, Qt::UTC)) << QVariant(0u);
    QTest::newRow("number is dropped") << QVariant(1700000000) << QVariant();
    QTest::newRow("missing key is added as no date") << QVariant() << QVariant();
}

void DataObjectConverterTest::datePreparationKeepsOnlyDateTimes()
{
    QFETCH(QVariant, start);
    QFETCH(QVariant, expected);
    DataObject project{{QStringLiteral("NAME"), QStringLiteral("Undated")}};
    if (start.isValid())
        project.insert(QStringLiteral("START"), start);

    DataObjectConverter::prepareDates(project);

    QVERIFY(project.contains(QStringLiteral("START")) && project.contains(QStringLiteral("DUE")));
    const QVariant prepared = project.value(QStringLiteral("START"));
    QCOMPARE(prepared.userType(), expected.userType());
    QCOMPARE(prepared, expected);
}

void DataObjectConverterTest::sqlValuesAreNumbersOrNonNullText_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("expected");

    QTest::newRow("true") << QVariant(true) << QVariant(qlonglong(1));
    QTest::newRow("unsigned beyond the range of int")
        << QVariant(4000000000u) << QVariant(qlonglong(4000000000));
    QTest::newRow("null text") << QVariant(QString()) << QVariant(QStringLiteral(""));
    QTest::newRow("whole decimal, as JSON numbers arrive")
        << QVariant(1700000000.0) << QVariant(qlonglong(1700000000));
    QTest::newRow("fraction stays decimal") << QVariant(0.5) << QVariant(0.5);
}

void DataObjectConverterTest::sqlValuesAreNumbersOrNonNullText()
{
    QFETCH(QVariant, value);
    QFETCH(QVariant, expected);

    const QVariant sqlValue = DataObjectConverter::toSqlValue(value);

    QCOMPARE(sqlValue.userType(), expected.userType());
    QCOMPARE(sqlValue, expected);
    QVERIFY(!sqlValue.isNull());
}

void DataObjectConverterTest::unixTimeOutsideUnsignedRangeIsAllOnes_data()
{
    QTest::addColumn<QDateTime>("moment");
    QTest::addColumn<uint>("expected");

    QTest::newRow("local time counts as its instant")
        << QDateTime(QDate(2024, 3, 5), QTime(19, 0), Qt::LocalTime)
        << uint(wallClock(QDate(2024, 3, 5), QTime(18, 0)).toSecsSinceEpoch());
    QTest::newRow("before 1970") << wallClock(QDate(1969, 12, 31), QTime(23, 0)) << 0xFFFFFFFFu;
    QTest::newRow("after 2106") << wallClock(QDate(2107, 1, 1)) << 0xFFFFFFFFu;
    QTest::newRow("invalid") << QDateTime() << 0xFFFFFFFFu;
}

void DataObjectConverterTest::unixTimeOutsideUnsignedRangeIsAllOnes()
{
    QFETCH(QDateTime, moment);
    QFETCH(uint, expected);

    QCOMPARE(DataObjectConverter::toUnixTime(moment), expected);
}

void DataObjectConverterTest::newIdIsLowerCaseGuidWithoutBraces()
{
    const QRegularExpression guid(
        QStringLiteral("^[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}$"));
    const QString first = DataObjectConverter::newId();

    QVERIFY2(guid.match(first).hasMatch(), qPrintable(first));
    QVERIFY(DataObjectConverter::newId() != first);
}

NORVEL_TEST_MAIN(DataObjectConverterTest)
#include "dataobjectconvertertest.moc"

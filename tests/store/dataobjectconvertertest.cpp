#include "store/dataobjectconverter.h"
#include "testlib/recordbuilder.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QRegularExpression>
#include <QSqlField>
#include <QtTest>

class DataObjectConverterTest : public QObject
{
    Q_OBJECT

private slots:
    void rowKeysAreUpperCaseFieldNames();
    void rowDatesReadAsUnsignedSeconds_data();
    void rowDatesReadAsUnsignedSeconds();
    void datePreparationKeepsOnlyDateTimes_data();
    void datePreparationKeepsOnlyDateTimes();
    void datePreparationAddsMissingDateKeys();
    void sqlValuesAreNumbersOrNonNullText_data();
    void sqlValuesAreNumbersOrNonNullText();
    void unixTimeOutsideUnsignedRangeIsAllOnes_data();
    void unixTimeOutsideUnsignedRangeIsAllOnes();
    void newIdIsLowerCaseGuidWithoutBraces();
};

void DataObjectConverterTest::rowKeysAreUpperCaseFieldNames()
{
    QSqlRecord record;
    record.append(QSqlField(QStringLiteral("id"), QVariant::String));
    record.append(QSqlField(QStringLiteral("synced"), QVariant::LongLong));
    record.setValue(0, QStringLiteral("abc"));
    record.setValue(1, 1);

    const DataObject object = DataObjectConverter::fromRecord(record);

    QCOMPARE(object.keys(), (QStringList{QStringLiteral("ID"), QStringLiteral("SYNCED")}));
    QCOMPARE(object.value(QStringLiteral("ID")), QVariant(QStringLiteral("abc")));
    QCOMPARE(object.value(QStringLiteral("SYNCED")).toInt(), 1);
}

void DataObjectConverterTest::rowDatesReadAsUnsignedSeconds_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QVariant>("columnValue");
    QTest::addColumn<QVariant>("expected");

    const QDateTime dueAt = wallClock(QDate(2024, 3, 5), QTime(18, 0));
    const qlonglong dueSeconds = dueAt.toSecsSinceEpoch();
    QTest::newRow("start in seconds") << "start" << QVariant(dueSeconds) << QVariant(dueAt);
    QTest::newRow("due in seconds") << "due" << QVariant(dueSeconds) << QVariant(dueAt);
    QTest::newRow("seconds held as text")
        << "due" << QVariant(QString::number(dueSeconds)) << QVariant(dueAt);
    QTest::newRow("empty text stays")
        << "start" << QVariant(QStringLiteral("")) << QVariant(QStringLiteral(""));
    QTest::newRow("unix time 0 stays raw") << "start" << QVariant(qlonglong(0)) << QVariant(qlonglong(0));
    QTest::newRow("other number fields stay raw")
        << "timestamp" << QVariant(dueSeconds) << QVariant(dueSeconds);
}

void DataObjectConverterTest::rowDatesReadAsUnsignedSeconds()
{
    QFETCH(QString, field);
    QFETCH(QVariant, columnValue);
    QFETCH(QVariant, expected);
    QSqlRecord record;
    record.append(QSqlField(field, columnValue.type()));
    record.setValue(0, columnValue);

    const QVariant read = DataObjectConverter::fromRecord(record).value(field.toUpper());

    QCOMPARE(read.userType(), expected.userType());
    QCOMPARE(read, expected);
    if (read.userType() == QMetaType::QDateTime)
        QCOMPARE(read.toDateTime().timeSpec(), Qt::UTC);
}

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
    QTest::newRow("empty text is dropped") << QVariant(QStringLiteral("")) << QVariant();
    QTest::newRow("invalid date-time is dropped") << QVariant(QDateTime()) << QVariant();
    QTest::newRow("missing value stays missing") << QVariant() << QVariant();
}

void DataObjectConverterTest::datePreparationKeepsOnlyDateTimes()
{
    QFETCH(QVariant, start);
    QFETCH(QVariant, expected);
    DataObject project = RecordBuilder::project().with(QStringLiteral("START"), start);

    DataObjectConverter::prepareDates(project);

    const QVariant prepared = project.value(QStringLiteral("START"));
    QCOMPARE(prepared.isValid(), expected.isValid());
    if (expected.isValid()) {
        QCOMPARE(prepared.userType(), int(QMetaType::UInt));
        QCOMPARE(prepared, expected);
    }
}

void DataObjectConverterTest::datePreparationAddsMissingDateKeys()
{
    DataObject task{{QStringLiteral("NAME"), QStringLiteral("Undated")}};

    DataObjectConverter::prepareDates(task);

    QVERIFY(task.contains(QStringLiteral("START")));
    QVERIFY(task.contains(QStringLiteral("DUE")));
    QVERIFY(!task.value(QStringLiteral("DUE")).isValid());
}

void DataObjectConverterTest::sqlValuesAreNumbersOrNonNullText_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("expected");

    QTest::newRow("true") << QVariant(true) << QVariant(qlonglong(1));
    QTest::newRow("false") << QVariant(false) << QVariant(qlonglong(0));
    QTest::newRow("unsigned") << QVariant(4000000000u) << QVariant(qlonglong(4000000000));
    QTest::newRow("int") << QVariant(-3) << QVariant(qlonglong(-3));
    QTest::newRow("double") << QVariant(1.5) << QVariant(1.5);
    QTest::newRow("text") << QVariant(QStringLiteral("it's :PARENT"))
                          << QVariant(QStringLiteral("it's :PARENT"));
    QTest::newRow("null text") << QVariant(QString()) << QVariant(QStringLiteral(""));
    QTest::newRow("invalid") << QVariant() << QVariant(QStringLiteral(""));
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

    QTest::newRow("epoch") << QDateTime::fromSecsSinceEpoch(0, Qt::UTC) << 0u;
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

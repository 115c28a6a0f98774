#include "dataobjectconverter.h"

#include "core/clock.h"
#include "store/objectkeys.h"
#include "store/recordreader.h"

#include <QRegularExpression>
#include <QUuid>

#include <cmath>

namespace {

QVariant preparedDate(const QVariant& value)
{
    const QDateTime dateTime = value.toDateTime();
    if (!dateTime.isValid())
        return QVariant();
    return DataObjectConverter::toUnixTime(dateTime);
}

// A null QString would reach SQLite as NULL; the store only ever writes text.
QString nonNullText(const QVariant& value)
{
    const QString text = value.toString();
    return text.isNull() ? QStringLiteral("") : text;
}
// JSON hands every number over as a double. Bound as one, 1700000000 reaches a text column as
// "1700000000.0", which no longer reads back as a number.
QVariant wholeNumberAsInteger(double number)
{
    const bool whole = std::trunc(number) == number && std::abs(number) < 9.0e15;
    return whole ? QVariant(qlonglong(number)) : QVariant(number);
}
} // namespace

DataObject DataObjectConverter::fromRecord(const QSqlRecord& record)
{
    return RecordReader(record).read(record);
}

QVariant DataObjectConverter::readDate(const QVariant& columnValue)
{
    const uint seconds = columnValue.toUInt();
    if (seconds == 0)
        return columnValue;
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
}

void DataObjectConverter::prepareDates(DataObject& object)
{
    object.insert(startKey, preparedDate(object.value(startKey)));
    object.insert(dueKey, preparedDate(object.value(dueKey)));
}

QVariant DataObjectConverter::toSqlValue(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Bool:
        return qlonglong(value.toBool() ? 1 : 0);
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
        return value.toLongLong();
    case QMetaType::Double:
    case QMetaType::Float:
        return wholeNumberAsInteger(value.toDouble());
    default:
        return nonNullText(value);
    }
}

DataObject DataObjectConverter::asWritten(DataObject object, uint timestamp)
{
    const bool fromServer = object.remove(QStringLiteral("SYNC")) > 0;
    object.insert(QStringLiteral("TIMESTAMP"), timestamp);
    object.insert(QStringLiteral("SYNCED"), fromServer ? 1 : 0);
    return object;
}

QString DataObjectConverter::newId()
{
    static const QRegularExpression braces(QStringLiteral("[{}]"));
    return QUuid::createUuid().toString().remove(braces);
}

uint DataObjectConverter::toUnixTime(const QDateTime& dateTime)
{
    const uint outOfRange = 0xFFFFFFFF;
    if (!dateTime.isValid())
        return outOfRange;
    const qint64 seconds = dateTime.toMSecsSinceEpoch() / 1000;
    if (quint64(seconds) >= quint64(outOfRange))
        return outOfRange;
    return uint(seconds);
}

uint DataObjectConverter::currentTimestamp()
{
    return toUnixTime(Clock::currentDateTimeUtc());
}

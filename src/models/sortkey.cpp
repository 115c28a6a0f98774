#include "sortkey.h"

#include "store/objectkeys.h"
#include "sync/sortinghelper.h"

#include <QDateTime>

#include <algorithm>
#include <limits>

using SortingNamespace::SortingType;

namespace {

// The values a key reads, found in one walk over the map: its keys come in order, and stepping
// from one to the next costs much less than a search per value, each comparing whole key texts.
struct KeyValues
{
    const QVariant* state = nullptr;
    const QVariant* timestamp = nullptr;
    const QVariant* id = nullptr;
    const QVariant* due = nullptr;
    const QVariant* start = nullptr;
    bool hasPeriod = false;
};

bool sameText(const QString& key, const QString& name)
{
    return key.size() == name.size() && std::equal(key.constBegin(), key.constEnd(), name.constBegin());
}

KeyValues keyValuesOf(const QVariantMap& record)
{
    KeyValues values;
    for (auto value = record.constBegin(); value != record.constEnd(); ++value) {
        const QString& key = value.key();
        if (sameText(key, stateKey))
            values.state = &value.value();
        else if (sameText(key, timestampKey))
            values.timestamp = &value.value();
        else if (sameText(key, idKey))
            values.id = &value.value();
        else if (sameText(key, dueKey))
            values.due = &value.value();
        else if (sameText(key, startKey))
            values.start = &value.value();
        else if (sameText(key, periodKey))
            values.hasPeriod = true;
    }
    return values;
}

// The store hands integers over as qlonglong and texts as QString. Those are read in place, which
// spares the copy and the general conversion that every other type still goes through.
template <typename T> const T& storedAs(const QVariant& value)
{
    return *static_cast<const T*>(value.constData());
}

int intOf(const QVariant* value)
{
    if (!value)
        return 0;
    return value->userType() == QMetaType::LongLong ? int(storedAs<qlonglong>(*value)) : value->toInt();
}

// A number stored as text, as TIMESTAMP is, is mostly plain digits; those are read here, cheaper
// than the general conversion, which takes everything else.
uint uintOfText(const QVariant& value)
{
    const QString& text = storedAs<QString>(value);
    const int maximumDigits = 10;
    if (text.isEmpty() || text.size() > maximumDigits)
        return value.toUInt();
    quint64 number = 0;
    for (const QChar character : text) {
        if (character < QLatin1Char('0') || character > QLatin1Char('9'))
            return value.toUInt();
        number = number * 10 + (character.unicode() - '0');
    }
    return number <= std::numeric_limits<uint>::max() ? uint(number) : value.toUInt();
}

uint uintOf(const QVariant* value)
{
    if (!value)
        return 0;
    switch (value->userType()) {
    case QMetaType::LongLong:
        return uint(storedAs<qlonglong>(*value));
    case QMetaType::QString:
        return uintOfText(*value);
    default:
        return value->toUInt();
    }
}

QString textOf(const QVariant* value)
{
    if (!value)
        return QString();
    return value->userType() == QMetaType::QString ? storedAs<QString>(*value) : value->toString();
}

// An undated object carries an empty text, a 0 or nothing; all read as no date.
bool readDate(const QVariant* value, qint64& milliseconds)
{
    if (!value)
        return false;
    if (value->userType() == QMetaType::QString && storedAs<QString>(*value).isEmpty())
        return false;
    const QDateTime date =
        value->userType() == QMetaType::QDateTime ? storedAs<QDateTime>(*value) : value->toDateTime();
    if (!date.isValid())
        return false;
    milliseconds = date.toMSecsSinceEpoch();
    return true;
}

QDate utcDate(qint64 milliseconds)
{
    const qint64 millisecondsPerDay = 24 * 60 * 60 * 1000;
    const qint64 days = milliseconds / millisecondsPerDay - (milliseconds % millisecondsPerDay < 0 ? 1 : 0);
    static const qint64 epochDay = QDate(1970, 1, 1).toJulianDay();
    return QDate::fromJulianDay(epochDay + days);
}

} // namespace

SortKey::SortKey(const QVariantMap& record)
    : m_record(record)
{
    const KeyValues values = keyValuesOf(record);
    m_state = intOf(values.state);
    m_timestamp = uintOf(values.timestamp);
    m_id = textOf(values.id);
    m_hasDue = readDate(values.due, m_due);
    m_hasStart = readDate(values.start, m_start);
    m_isTask = values.hasPeriod;
}

QDate SortKey::startDate() const
{
    return m_hasStart ? utcDate(m_start) : QDate();
}

QDate SortKey::dueDate() const
{
    return m_hasDue ? utcDate(m_due) : QDate();
}

bool SortKey::lessThan(const SortKey& other, SortingType sortingType, bool groupByDate) const
{
    if (m_state != other.m_state)
        return m_state < other.m_state;
    if (!groupByDate)
        return lessBySortingType(other, sortingType);
    return lessByDates(other, sortingType);
}

bool SortKey::lessByDates(const SortKey& other, SortingType sortingType) const
{
    if (m_hasDue && other.m_hasDue && m_due != other.m_due)
        return m_due < other.m_due;
    const bool dated = m_hasStart || m_hasDue;
    const bool otherDated = other.m_hasStart || other.m_hasDue;
    if (dated != otherDated)
        return dated;
    if (m_hasDue != other.m_hasDue)
        return m_hasDue;
    // From here both have a due date or neither has; an absent one compares as equal to another.
    const bool sameDue = !m_hasDue || m_due == other.m_due;
    if (m_hasStart != other.m_hasStart) {
        if (sameDue)
            return lessBySortingType(other, sortingType);
        return m_due < other.m_due;
    }
    if (!sameDue)
        return m_due < other.m_due;
    if (m_hasStart && m_start != other.m_start)
        return m_start < other.m_start;
    return lessBySortingType(other, sortingType);
}

bool SortKey::lessBySortingType(const SortKey& other, SortingType sortingType) const
{
    switch (sortingType) {
    case SortingNamespace::TimestampAscType:
        if (m_timestamp != other.m_timestamp)
            return m_timestamp < other.m_timestamp;
        break;
    case SortingNamespace::TimestampDescType:
        if (m_timestamp != other.m_timestamp)
            return m_timestamp > other.m_timestamp;
        break;
    case SortingNamespace::AlphabeticalType:
        // Names need the collator; they are compared where the helper compares them.
        return SortingHelper::compareBySortingType(m_record, other.m_record, sortingType);
    case SortingNamespace::ManualType:
        break;
    }
    return m_id < other.m_id;
}

#include "sortkey.h"

#include "sync/sortinghelper.h"

#include <QDateTime>

using SortingNamespace::SortingType;

namespace {

// An undated object carries an empty text, a 0 or nothing; all read as no date.
bool readDate(const QVariantMap& record, const QString& key, qint64& milliseconds)
{
    const auto value = record.constFind(key);
    if (value == record.constEnd())
        return false;
    if (value->userType() == QMetaType::QString && value->toString().isEmpty())
        return false;
    const QDateTime date = value->toDateTime();
    if (!date.isValid())
        return false;
    milliseconds = date.toMSecsSinceEpoch();
    return true;
}

} // namespace

SortKey::SortKey(const QVariantMap& record, int group)
    : m_record(record)
    , m_group(group)
    , m_state(record.value(QStringLiteral("STATE")).toInt())
    , m_timestamp(record.value(QStringLiteral("TIMESTAMP")).toUInt())
    , m_id(record.value(QStringLiteral("ID")).toString())
{
    m_hasDue = readDate(record, QStringLiteral("DUE"), m_due);
    m_hasStart = readDate(record, QStringLiteral("START"), m_start);
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

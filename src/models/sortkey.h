#pragma once

#include "sync/sortingnamespace.h"

#include <QDate>
#include <QString>
#include <QVariantMap>

// What the sorting rules read from one row, taken from its map once when the row changes, so that
// a sort compares plain values instead of looking up and converting map entries at every step. The
// comparison is SortingHelper::compareObjects on these values.
class SortKey
{
public:
    explicit SortKey(const QVariantMap& record);

    // The map the values were taken from.
    const QVariantMap& record() const { return m_record; }
    // Comes before every other rule: the section a list puts the row in, 0 without sections.
    int group() const { return m_group; }
    void setGroup(int group) { m_group = group; }
    int state() const { return m_state; }
    const QString& id() const { return m_id; }
    // Only tasks repeat, so only they carry PERIOD.
    bool isTask() const { return m_isTask; }
    // The UTC days of START and DUE; null for an undated object.
    QDate startDate() const;
    QDate dueDate() const;

    // True when this row comes before `other`, as SortingHelper::compareObjects decides.
    bool lessThan(const SortKey& other, SortingNamespace::SortingType sortingType, bool groupByDate) const;

private:
    bool lessByDates(const SortKey& other, SortingNamespace::SortingType sortingType) const;
    bool lessBySortingType(const SortKey& other, SortingNamespace::SortingType sortingType) const;

    QVariantMap m_record;
    int m_group = 0;
    int m_state = 0;
    uint m_timestamp = 0;
    QString m_id;
    // Milliseconds since the epoch; only meaningful when the date is there.
    qint64 m_due = 0;
    qint64 m_start = 0;
    bool m_hasDue = false;
    bool m_hasStart = false;
    bool m_isTask = false;
};

// Keys live in a vector with one entry per row; moving them is moving their bytes.
Q_DECLARE_TYPEINFO(SortKey, Q_MOVABLE_TYPE);

#include "recordreader.h"

#include "store/dataobjectconverter.h"

#include <QMutex>

#include <algorithm>

namespace {
const QString startKey = QStringLiteral("START");
const QString dueKey = QStringLiteral("DUE");
const QString idKey = QStringLiteral("ID");

// One string per key for every map of the process: comparing two maps' keys then stops at the
// shared pointer instead of reading the text.
QString sharedKey(const QString& fieldName)
{
    static QMutex mutex;
    static QHash<QString, QString> keys;
    const QString key = fieldName.toUpper();
    const QMutexLocker lock(&mutex);
    const auto known = keys.constFind(key);
    if (known != keys.constEnd())
        return *known;
    keys.insert(key, key);
    return key;
}
} // namespace

RecordReader::RecordReader(const QSqlRecord& fields)
{
    for (int index = 0; index < fields.count(); ++index) {
        const QString key = sharedKey(fields.fieldName(index));
        const auto sameKey = std::find_if(m_columns.begin(), m_columns.end(),
                                          [&key](const Column& column) { return column.key == key; });
        if (sameKey != m_columns.end())
            m_columns.erase(sameKey);
        m_columns.append({key, index, key == startKey || key == dueKey});
    }
    std::sort(m_columns.begin(), m_columns.end(),
              [](const Column& left, const Column& right) { return left.key < right.key; });
    for (const Column& column : qAsConst(m_columns)) {
        if (column.key == idKey)
            m_idColumn = column.index;
    }
}

DataObject RecordReader::read(const QSqlQuery& query) const
{
    return readRow(query);
}

DataObject RecordReader::read(const QSqlRecord& record) const
{
    return readRow(record);
}

DataObject RecordReader::read(const QSqlQuery& query, ObjectsById& known)
{
    if (m_idColumn < 0)
        return readRow(query);
    m_values.resize(m_columns.size());
    for (int position = 0; position < m_columns.size(); ++position)
        m_values[position] = query.value(m_columns.at(position).index);
    DataObject& object = known[query.value(m_idColumn).toString()];
    if (holdsRow(object))
        return object;
    object.clear();
    for (int position = 0; position < m_columns.size(); ++position) {
        const Column& column = m_columns.at(position);
        const QVariant& value = m_values.at(position);
        object.insert(object.cend(), column.key,
                      column.isDate ? DataObjectConverter::readDate(value) : value);
    }
    return object;
}

template <typename Row> DataObject RecordReader::readRow(const Row& row) const
{
    DataObject object;
    for (const Column& column : m_columns) {
        const QVariant value = row.value(column.index);
        object.insert(object.cend(), column.key,
                      column.isDate ? DataObjectConverter::readDate(value) : value);
    }
    return object;
}

// Whether the map is what this row would be read as: the same keys and the same values, compared in
// key order without a lookup.
bool RecordReader::holdsRow(const DataObject& object) const
{
    if (object.size() != m_columns.size())
        return false;
    auto field = object.cbegin();
    for (int position = 0; position < m_columns.size(); ++position, ++field) {
        const Column& column = m_columns.at(position);
        if (field.key() != column.key || !holdsValue(*field, m_values.at(position), column.isDate))
            return false;
    }
    return true;
}

// Variants of different types, or a null and an empty text, can compare equal and still be different
// map values; only the same value of the same kind counts.
bool RecordReader::holdsValue(const QVariant& stored, const QVariant& read, bool isDate)
{
    if (isDate) {
        const uint seconds = read.toUInt();
        if (seconds != 0) {
            return stored.userType() == QMetaType::QDateTime &&
                   stored.toDateTime().toSecsSinceEpoch() == qint64(seconds);
        }
    }
    return stored.userType() == read.userType() && stored.isNull() == read.isNull() && stored == read;
}

#include "recordreader.h"

#include "store/dataobjectconverter.h"
#include "store/objectkeys.h"
#include "store/rowcache.h"

#include "core/logmanager.h"

#include <QMutex>
#include <QSqlResult>

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

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
sqlite3_stmt* nativeStatement(const QSqlQuery& query)
{
    const QVariant handle = query.result() ? query.result()->handle() : QVariant();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3_stmt*") != 0)
        return nullptr;
    return *static_cast<sqlite3_stmt* const*>(handle.constData());
}

// Calls eachRow for every row of a query that has just run, stepping SQLite's own statement; false
// when the query has none to step.
template <typename EachRow> bool stepNatively(QSqlQuery& query, const EachRow& eachRow)
{
    sqlite3_stmt* statement = nativeStatement(query);
    if (!statement)
        return false;
    // Running the query stepped onto its first row, or reset the statement when there was none.
    if (!sqlite3_stmt_busy(statement))
        return true;
    int status = SQLITE_ROW;
    while (status == SQLITE_ROW) {
        eachRow(statement);
        status = sqlite3_step(statement);
    }
    if (status != SQLITE_DONE) {
        QLOG_ERROR() << "SQL List query error: " << sqlite3_errmsg(sqlite3_db_handle(statement));
    }
    return true;
}

// Eight bytes at a time: ids and names are read for every row of every list.
bool isAscii(const char* text, int size)
{
    const quint64 highBits = 0x8080808080808080ULL;
    int index = 0;
    for (; index + 8 <= size; index += 8) {
        quint64 word;
        std::memcpy(&word, text + index, sizeof(word));
        if (word & highBits)
            return false;
    }
    return std::all_of(text + index, text + size, [](char character) { return uchar(character) < 0x80; });
}

// The helpers below read a column through its sqlite3_value, which SQLite hands out without taking the
// connection's mutex again for every access; the connection is only ever used by the database thread.

// Taken as SQLite stores it: asking for UTF-16 would make SQLite convert into a buffer of its own first.
QString textOf(sqlite3_value* value)
{
    const char* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    const int size = sqlite3_value_bytes(value);
    return isAscii(text, size) ? QString::fromLatin1(text, size) : QString::fromUtf8(text, size);
}

// A column's value as Qt's SQLite driver gives it.
QVariant columnValue(sqlite3_value* value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        return qlonglong(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
        return sqlite3_value_double(value);
    case SQLITE_NULL:
        return QVariant(QVariant::String);
    case SQLITE_BLOB:
        return QByteArray(static_cast<const char*>(sqlite3_value_blob(value)), sqlite3_value_bytes(value));
    default:
        return textOf(value);
    }
}

// One pass over the bytes: an ASCII byte is the one UTF-16 unit it stands for, so only text with
// other bytes needs converting.
bool holdsText(const QVariant& stored, sqlite3_value* value)
{
    if (stored.userType() != QMetaType::QString)
        return false;
    const QString& storedText = *static_cast<const QString*>(stored.constData());
    if (storedText.isNull())
        return false;
    const char* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    const int size = sqlite3_value_bytes(value);
    const QChar* units = storedText.constData();
    const int length = storedText.size();
    for (int index = 0; index < size; ++index) {
        const uchar byte = uchar(text[index]);
        if (byte >= 0x80)
            return storedText == QString::fromUtf8(text, size);
        if (index >= length || units[index].unicode() != byte)
            return false;
    }
    return length == size;
}

// Whether the stored value is the one the column holds, of the same kind: variants of different
// types, or a null and an empty text, can compare equal and still be different map values.
bool holdsValue(const QVariant& stored, sqlite3_value* value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        return stored.userType() == QMetaType::LongLong && stored.toLongLong() == sqlite3_value_int64(value);
    case SQLITE_FLOAT:
        return stored.userType() == QMetaType::Double && stored.toDouble() == sqlite3_value_double(value);
    case SQLITE_NULL:
        return stored.userType() == QMetaType::QString && stored.isNull();
    case SQLITE_BLOB:
        return stored == columnValue(value);
    default:
        return holdsText(stored, value);
    }
}

bool holdsDate(const QVariant& stored, const QVariant& read)
{
    const uint seconds = read.toUInt();
    if (seconds != 0)
        return stored.userType() == QMetaType::QDateTime &&
               stored.toDateTime().toSecsSinceEpoch() == qint64(seconds);
    return stored.userType() == read.userType() && stored.isNull() == read.isNull() && stored == read;
}

// holdsDate for the columns of nearly every row, a date in seconds or the empty text of an undated
// one, without making a variant of the column first.
bool holdsDateColumn(const QVariant& stored, sqlite3_value* value)
{
    const int type = sqlite3_value_type(value);
    if (type == SQLITE_INTEGER) {
        const qint64 seconds = sqlite3_value_int64(value);
        if (seconds > 0 && seconds <= std::numeric_limits<uint>::max())
            return stored.userType() == QMetaType::QDateTime &&
                   stored.toDateTime().toSecsSinceEpoch() == seconds;
    }
    if (type == SQLITE_TEXT && sqlite3_value_bytes(value) == 0)
        return stored.userType() == QMetaType::QString && !stored.isNull() &&
               static_cast<const QString*>(stored.constData())->isEmpty();
    return holdsDate(stored, columnValue(value));
}
} // namespace

RecordReader::RecordReader(const QSqlRecord& fields, int firstColumn)
{
    for (int index = firstColumn; index < fields.count(); ++index) {
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

DataObject RecordReader::read(const QSqlRecord& record) const
{
    return readRow(record);
}

// Rows are read from SQLite's own statement: going through QSqlQuery costs a variant and, for text,
// a converted copy for every value, before the values of an unchanged row are dropped again.
QList<DataObject> RecordReader::readAll(QSqlQuery& query, ObjectsById& known)
{
    QList<DataObject> objects;
    const auto readRowOf = [&](sqlite3_stmt* statement) { objects.append(readKnown(statement, known)); };
    if (m_idColumn >= 0 && stepNatively(query, readRowOf))
        return objects;
    while (query.next())
        objects.append(readRow(query));
    return objects;
}

QVector<qint64> RecordReader::readAllInto(QSqlQuery& query, RowCache& cache) const
{
    QVector<qint64> rowIds;
    const auto keep = [&](qint64 rowId, const auto& readObject) {
        rowIds.append(rowId);
        if (!cache.contains(rowId))
            cache.keep(rowId, readObject());
    };
    const auto keepRowOf = [&](sqlite3_stmt* statement) {
        keep(sqlite3_column_int64(statement, 0), [&] { return readNew(statement); });
    };
    if (stepNatively(query, keepRowOf))
        return rowIds;
    while (query.next())
        keep(query.value(0).toLongLong(), [&] { return readRow(query); });
    return rowIds;
}

QVector<qint64> RecordReader::readFirstColumnIntegers(QSqlQuery& query)
{
    QVector<qint64> values;
    const auto readValueOf = [&](sqlite3_stmt* statement) {
        values.append(sqlite3_column_int64(statement, 0));
    };
    if (stepNatively(query, readValueOf))
        return values;
    while (query.next())
        values.append(query.value(0).toLongLong());
    return values;
}

DataObject RecordReader::readKnown(sqlite3_stmt* statement, ObjectsById& known) const
{
    DataObject& object = known[textOf(sqlite3_column_value(statement, m_idColumn))];
    if (!holdsRow(object, statement))
        object = readNew(statement);
    return object;
}

DataObject RecordReader::readNew(sqlite3_stmt* statement) const
{
    DataObject object;
    for (const Column& column : m_columns) {
        const QVariant value = columnValue(sqlite3_column_value(statement, column.index));
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
// key order and without copying a value out of SQLite.
bool RecordReader::holdsRow(const DataObject& object, sqlite3_stmt* statement) const
{
    if (object.size() != m_columns.size())
        return false;
    auto field = object.cbegin();
    for (const Column& column : m_columns) {
        // Keys made by this reader share their text, so the comparison is mostly of pointers.
        const QString& key = field.key();
        if (key.constData() != column.key.constData() && key != column.key)
            return false;
        sqlite3_value* value = sqlite3_column_value(statement, column.index);
        const bool holds = column.isDate ? holdsDateColumn(*field, value) : holdsValue(*field, value);
        if (!holds)
            return false;
        ++field;
    }
    return true;
}

#include "rowcache.h"

#include <sqlite3.h>

#include <cstring>
#include <limits>

namespace {
const int minimumHeldLimit = 8192;
} // namespace

struct RowCache::Private
{
    QString table;
    QByteArray tableName;
    QString columns;
    sqlite3* connection = nullptr;
    int dataVersion = -1;
    // Indexed by rowid: the table's rowids count up from 1 and are never reused, so the vector stays
    // about as long as the table, and a list read in rowid order walks it in order. An empty map is
    // an empty slot.
    QVector<DataObject> objects;
    int objectCount = 0;
    int heldLimit = minimumHeldLimit;

    void forgetAll();
    void forget(qint64 rowId);
    int readDataVersion() const;

    static void rowWritten(void* cache, int operation, const char* database, const char* table,
                           sqlite3_int64 rowId);
    static void rolledBack(void* cache);
};

void RowCache::Private::forgetAll()
{
    objects.clear();
    objectCount = 0;
    heldLimit = minimumHeldLimit;
}

void RowCache::Private::forget(qint64 rowId)
{
    if (rowId < 0 || rowId >= objects.size() || objects.at(int(rowId)).isEmpty())
        return;
    objects[int(rowId)] = DataObject();
    --objectCount;
}

// Changes only when another connection commits: this connection's own writes are followed row by row.
int RowCache::Private::readDataVersion() const
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(connection, "PRAGMA data_version", -1, &statement, nullptr) != SQLITE_OK)
        return -1;
    const int version = sqlite3_step(statement) == SQLITE_ROW ? sqlite3_column_int(statement, 0) : -1;
    sqlite3_finalize(statement);
    return version;
}

void RowCache::Private::rowWritten(void* cache, int, const char* database, const char* table,
                                   sqlite3_int64 rowId)
{
    auto* self = static_cast<Private*>(cache);
    if (std::strcmp(database, "main") == 0 && self->tableName == table)
        self->forget(rowId);
}

void RowCache::Private::rolledBack(void* cache)
{
    static_cast<Private*>(cache)->forgetAll();
}

RowCache::RowCache(const QString& table)
    : d(std::make_unique<Private>())
{
    d->table = table;
    d->tableName = table.toUtf8();
}

RowCache::~RowCache() = default;

void RowCache::watch(sqlite3* connection)
{
    if (d->connection) {
        sqlite3_update_hook(d->connection, nullptr, nullptr);
        sqlite3_rollback_hook(d->connection, nullptr, nullptr);
    }
    d->forgetAll();
    d->connection = connection;
    d->dataVersion = -1;
    if (connection) {
        sqlite3_update_hook(connection, &Private::rowWritten, d.get());
        sqlite3_rollback_hook(connection, &Private::rolledBack, d.get());
    }
}

const QString& RowCache::table() const
{
    return d->table;
}

void RowCache::checkOtherConnections()
{
    if (!d->connection)
        return;
    const int version = d->readDataVersion();
    if (version != d->dataVersion || version < 0)
        d->forgetAll();
    d->dataVersion = version;
}

void RowCache::useColumns(const QString& columns)
{
    if (columns == d->columns)
        return;
    d->forgetAll();
    d->columns = columns;
}

QList<DataObject> RowCache::objects(const QVector<qint64>& rowIds, QVector<int>& missing) const
{
    QList<DataObject> found;
    found.reserve(rowIds.size());
    missing.clear();
    for (const qint64 rowId : rowIds) {
        if (!contains(rowId))
            missing.append(found.size());
        found.append(object(rowId));
    }
    return found;
}

DataObject RowCache::object(qint64 rowId) const
{
    return contains(rowId) ? d->objects.at(int(rowId)) : DataObject();
}

bool RowCache::isEmpty() const
{
    return d->objectCount == 0;
}

bool RowCache::contains(qint64 rowId) const
{
    return rowId >= 0 && rowId < d->objects.size() && !d->objects.at(int(rowId)).isEmpty();
}

void RowCache::keep(qint64 rowId, const DataObject& object)
{
    if (rowId < 0 || rowId > std::numeric_limits<int>::max() - 1 || object.isEmpty())
        return;
    if (rowId >= d->objects.size())
        d->objects.resize(int(rowId) + 1);
    DataObject& slot = d->objects[int(rowId)];
    if (slot.isEmpty())
        ++d->objectCount;
    slot = object;
}

void RowCache::forgetUnheld()
{
    if (d->objectCount <= d->heldLimit)
        return;
    for (DataObject& object : d->objects) {
        if (!object.isEmpty() && object.isDetached()) {
            object = DataObject();
            --d->objectCount;
        }
    }
    // Doubling the limit keeps the walks rare however many maps stay held.
    d->heldLimit = qMax(minimumHeldLimit, 2 * d->objectCount);
}

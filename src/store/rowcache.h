#pragma once

#include "store/dataobject.h"

#include <QString>
#include <QVector>

#include <memory>

struct sqlite3;

// The maps last read from the rows of one table, by rowid. A map stays only as long as its row is
// known to be unchanged: every statement that writes the row drops it, a rollback drops all (it
// restores rows without saying which), and so does a commit by another connection. Reading a row
// that is still here is a hash lookup, and hands out the very map handed out before, which lists
// that read again then find unchanged by identity.
class RowCache
{
public:
    explicit RowCache(const QString& table);
    ~RowCache();
    RowCache(const RowCache&) = delete;
    RowCache& operator=(const RowCache&) = delete;

    // Follows the writes on this connection from now on, forgetting every map; null stops following.
    // The connection followed must still be open when this is called again.
    void watch(sqlite3* connection);
    const QString& table() const;

    // Forgets every map when the file changed by another connection since the last call.
    void checkOtherConnections();
    // Forgets every map when the rows are read with other columns than before.
    void useColumns(const QString& columns);

    // The maps of the given rows, in their order; a row not here is an empty map, and its position
    // is named in `missing`.
    QList<DataObject> objects(const QVector<qint64>& rowIds, QVector<int>& missing) const;
    // The row's map, or an empty map when the row is not here.
    DataObject object(qint64 rowId) const;
    bool isEmpty() const;
    bool contains(qint64 rowId) const;
    void keep(qint64 rowId, const DataObject& object);
    // Forgets the maps nobody but this cache holds any more, once there are many.
    void forgetUnheld();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

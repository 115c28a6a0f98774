#pragma once

#include "store/dataobject.h"

#include <QHash>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QString>
#include <QVector>

class RowCache;
struct sqlite3_stmt;

// Turns the rows of one query into object maps, as DataObjectConverter::fromRecord describes. The
// keys, their order and the date columns are worked out once from the query's fields, so a row costs
// its values only, and all maps share the same key strings.
class RecordReader
{
public:
    // Maps already handed out, by ID. A row equal to its earlier map gets that map back instead of a
    // new one, so that an unchanged object is the same shared map at every read: lists that read
    // again find it unchanged by identity, and hold it once in memory.
    using ObjectsById = QHash<QString, DataObject>;

    // Columns before `firstColumn` are not part of the maps.
    explicit RecordReader(const QSqlRecord& fields, int firstColumn = 0);

    DataObject read(const QSqlRecord& record) const;
    // Every row of a query that has just run, reusing and updating the given maps. Rows of a query
    // without an ID column are read as new maps.
    QList<DataObject> readAll(QSqlQuery& query, ObjectsById& known);
    // Every row of a query that has just run and selects the rowid first, kept in the cache unless
    // the cache has it already. Returns the rowids in the rows' order.
    QVector<qint64> readAllInto(QSqlQuery& query, RowCache& cache) const;
    // The first column of every row of a query that has just run, as integers.
    static QVector<qint64> readFirstColumnIntegers(QSqlQuery& query);

private:
    struct Column
    {
        QString key;
        int index = 0;
        bool isDate = false;
    };

    template <typename Row> DataObject readRow(const Row& row) const;
    DataObject readNew(sqlite3_stmt* statement) const;
    DataObject readKnown(sqlite3_stmt* statement, ObjectsById& known) const;
    bool holdsRow(const DataObject& object, sqlite3_stmt* statement) const;

    // In key order, which lets every insertion go to the end of the map; a name that occurs twice
    // keeps its last column, as inserting field after field would.
    QVector<Column> m_columns;
    int m_idColumn = -1;
};

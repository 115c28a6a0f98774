#pragma once

#include "store/dataobject.h"

#include <QList>
#include <QObject>
#include <QSqlRecord>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <memory>

class CalendarInfoStore;
class ContextStore;
class ProjectStore;
class TaskStore;

// The one connection to the SQLite file and every statement that runs on it. Values always travel
// as bound parameters: statements carry positional "?" placeholders and the values list fills them
// in order, converted as DataObjectConverter::toSqlValue says.
class DatabaseHandler : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool connected READ isConnected NOTIFY connectedChanged)

public:
    // Adds an SQLite connection under the given name, or Qt's default connection for an empty name.
    explicit DatabaseHandler(const QString& connectionName, QObject* parent = nullptr);
    ~DatabaseHandler() override;

    // The program's connection, "norvel_app". Its first call decides the thread that owns it.
    static DatabaseHandler* instance();

    // One "?" per value, for the list of an IN clause.
    static QString placeholders(int count);

    // The stores that run the statements of each table, owned by this handler.
    TaskStore* tasks() const;
    ProjectStore* projects() const;
    ContextStore* contexts() const;
    CalendarInfoStore* calendarInfo() const;

    bool connectDatabase(const QString& filePath);
    void disconnectDatabase();
    Q_INVOKABLE bool isConnected() const;

    // Connects and brings an older file up to date; the schema additions run even when the connection
    // failed, so that the failure shows in the log. Returns the connection result.
    bool openDatabase(const QString& filePath);

    void createCalendarInfoTable();
    void createTaskStateIndex();
    void createUniqueIndexForProjectsAndContexts();
    // Rewrites a file of small pages with larger ones, which long lists read faster.
    void enlargePages();
    // Indexes for the task lists by project, by context and of repeating tasks.
    void createTaskListIndexes();
    // Gives the query planner the shape of the task table.
    void updateQueryStatistics();

    Q_INVOKABLE bool beginTransaction();
    Q_INVOKABLE bool commitChanges();
    Q_INVOKABLE bool rollbackChanges();
    // True from a successful beginTransaction until the next commit or rollback.
    bool isTransactionOpen() const;
    Q_INVOKABLE QString lastCreatedObjectId() const;

    // Statement runners. A failure is logged and yields false, an empty list, an empty record or 0.
    bool executeQuery(const QString& statement, const QVariantList& values = {});
    QList<QSqlRecord> executeListQuery(const QString& statement, const QVariantList& values = {});
    // The first row, or an empty record when nothing matches.
    QSqlRecord executeRecordQuery(const QString& statement, const QVariantList& values = {});
    // The first column of the first row, or 0 without a row.
    int executeCountQuery(const QString& statement, const QVariantList& values = {});
    // A count whose statement holds one %1 for a list of ids, each id bound as a value of its own.
    int executeListCountQuery(const QString& statement, const QStringList& ids);
    // The first column of every row, as text.
    QStringList selectFirstColumn(const QString& statement, const QVariantList& values = {});
    QList<DataObject> selectObjects(const QString& statement, const QVariantList& values = {});
    // The task rows the condition (the statement after "FROM task") selects, in its order, with the
    // given columns; a row unchanged since it was last read is the map handed out then.
    QList<DataObject> selectTaskRows(const QString& columns, const QString& condition,
                                     const QVariantList& values = {});
    // The first row as a map, or an empty map when nothing matches.
    DataObject selectObject(const QString& statement, const QVariantList& values = {});

    // Writes a new row from the map's keys. A map with SYNC comes from the server and is written
    // as synced, inside the caller's transaction; any other is local, unsynced, gets a new ID when
    // it has none, and opens a transaction that the caller commits or rolls back.
    bool insertObject(DataObject object, const QString& table);
    // Rewrites every key of the map, ID included, on the row with the map's ID. A local update
    // stamps the present time and marks the row unsynced; one with SYNC keeps the map's TIMESTAMP
    // and marks it synced. The timestamp written is handed back. Opens no transaction.
    bool updateObject(DataObject object, const QString& table, uint& timestamp);

signals:
    void contextAdded(const QVariantMap& context);
    void contextUpdated(const QVariantMap& context);
    void projectAdded(const QVariantMap& project);
    void projectUpdated(const QVariantMap& project);
    void connectedChanged(bool connected);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

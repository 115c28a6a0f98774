#include "databasehandler.h"

#include "core/logmanager.h"
#include "store/calendarinfostore.h"
#include "store/contextstore.h"
#include "store/dataobjectconverter.h"
#include "store/objectkeys.h"
#include "store/projectstore.h"
#include "store/recordreader.h"
#include "store/rowcache.h"
#include "store/taskstore.h"

#include <QElapsedTimer>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

#include <sqlite3.h>

#include <algorithm>

namespace {
const QString syncKey = QStringLiteral("SYNC");
const int minimumKnownObjectsLimit = 8192;
// The shipped file has pages of 1 KiB. Pages of 4 KiB hold four times the index entries, so a long
// list takes a quarter of the page reads and tree steps.
const int preferredPageSize = 4096;
// Rows fetched by rowid in one statement; well below SQLite's limit on bound values.
const int rowIdsPerStatement = 500;

sqlite3* nativeConnection(const QSqlDatabase& database)
{
    const QVariant handle = database.driver() ? database.driver()->handle() : QVariant();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return nullptr;
    return *static_cast<sqlite3* const*>(handle.constData());
}
} // namespace

struct DatabaseHandler::Private
{
    QSqlDatabase database;
    QString lastCreatedObjectId;
    bool transactionOpen = false;
    TaskStore* tasks = nullptr;
    ProjectStore* projects = nullptr;
    ContextStore* contexts = nullptr;
    CalendarInfoStore* calendarInfo = nullptr;
    // Every object map handed out and still held somewhere, so that the next read can hand out the
    // same map for an unchanged row.
    RecordReader::ObjectsById knownObjects;
    int knownObjectsLimit = minimumKnownObjectsLimit;
    // Task rows as last read, while unchanged: the long lists are all lists of tasks.
    RowCache taskRows{QStringLiteral("task")};

    // Forgets the maps that nobody but this handler holds any more, once there are many of them.
    void forgetUnheldObjects();
    // Reads the rows of a statement that selects the rowid first into the task row cache.
    // Returns the rowids read, in their order.
    QVector<qint64> cacheTaskRows(const QString& statement, const QVariantList& values);
    QVector<qint64> selectRowIds(const QString& statement, const QVariantList& values);
    // The rows at the given positions of the rowid list.
    void cacheTaskRowsById(const QString& columns, const QVector<qint64>& rowIds,
                           const QVector<int>& positions);

    // Prepares the statement on the connection, binds the values in order and runs it. On failure
    // the query holds the error.
    static bool run(QSqlQuery& query, const QString& statement, const QVariantList& values);
    // The same for a statement whose rows are read once, front to back; a failure is logged.
    static bool runReading(QSqlQuery& query, const QString& statement, const QVariantList& values);
};

bool DatabaseHandler::Private::run(QSqlQuery& query, const QString& statement, const QVariantList& values)
{
    if (!query.prepare(statement))
        return false;
    for (const QVariant& value : values)
        query.addBindValue(DataObjectConverter::toSqlValue(value));
    return query.exec();
}

bool DatabaseHandler::Private::runReading(QSqlQuery& query, const QString& statement,
                                          const QVariantList& values)
{
    query.setForwardOnly(true);
    if (run(query, statement, values))
        return true;
    QLOG_ERROR() << "SQL List query error: " << query.lastError().text();
    return false;
}

void DatabaseHandler::Private::forgetUnheldObjects()
{
    if (knownObjects.size() <= knownObjectsLimit)
        return;
    for (auto object = knownObjects.begin(); object != knownObjects.end();) {
        if (object->isDetached())
            object = knownObjects.erase(object);
        else
            ++object;
    }
    // Doubling the limit keeps the walks rare however many maps stay held.
    knownObjectsLimit = qMax(minimumKnownObjectsLimit, 2 * knownObjects.size());
}

QVector<qint64> DatabaseHandler::Private::cacheTaskRows(const QString& statement, const QVariantList& values)
{
    QSqlQuery query(database);
    if (!runReading(query, statement, values))
        return {};
    return RecordReader(query.record(), 1).readAllInto(query, taskRows);
}

QVector<qint64> DatabaseHandler::Private::selectRowIds(const QString& statement, const QVariantList& values)
{
    QSqlQuery query(database);
    if (!runReading(query, statement, values))
        return {};
    return RecordReader::readFirstColumnIntegers(query);
}

void DatabaseHandler::Private::cacheTaskRowsById(const QString& columns, const QVector<qint64>& rowIds,
                                                 const QVector<int>& positions)
{
    for (int first = 0; first < positions.size(); first += rowIdsPerStatement) {
        const QVector<int> part = positions.mid(first, rowIdsPerStatement);
        QVariantList values;
        for (const int position : part)
            values.append(rowIds.at(position));
        cacheTaskRows(QStringLiteral("SELECT rowid, %1 FROM %2 WHERE rowid IN (%3)")
                          .arg(columns, taskRows.table(), placeholders(part.size())),
                      values);
    }
}

DatabaseHandler::DatabaseHandler(const QString& connectionName, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    // Objects cross to and from the database thread by these type names.
    registerDataObjectMetaTypes();
    const QString driver = QStringLiteral("QSQLITE");
    d->database = connectionName.isEmpty() ? QSqlDatabase::addDatabase(driver)
                                           : QSqlDatabase::addDatabase(driver, connectionName);
    d->tasks = new TaskStore(this, this);
    d->projects = new ProjectStore(this, this);
    d->contexts = new ContextStore(this, this);
    d->calendarInfo = new CalendarInfoStore(this, this);
}

TaskStore* DatabaseHandler::tasks() const
{
    return d->tasks;
}

ProjectStore* DatabaseHandler::projects() const
{
    return d->projects;
}

ContextStore* DatabaseHandler::contexts() const
{
    return d->contexts;
}

CalendarInfoStore* DatabaseHandler::calendarInfo() const
{
    return d->calendarInfo;
}

DatabaseHandler::~DatabaseHandler()
{
    const QString connectionName = d->database.connectionName();
    d->taskRows.watch(nullptr);
    d->database.close();
    d->database = QSqlDatabase();
    QSqlDatabase::removeDatabase(connectionName);
}

DatabaseHandler* DatabaseHandler::instance()
{
    static DatabaseHandler* handler = new DatabaseHandler(QStringLiteral("norvel_app"));
    return handler;
}

bool DatabaseHandler::connectDatabase(const QString& filePath)
{
    // Opening an open connection closes it first.
    d->taskRows.watch(nullptr);
    d->database.setDatabaseName(filePath);
    const bool opened = d->database.open();
    d->taskRows.watch(opened ? nativeConnection(d->database) : nullptr);
    return opened;
}

void DatabaseHandler::disconnectDatabase()
{
    QLOG_INFO() << "Disconnecting from database...";
    d->taskRows.watch(nullptr);
    d->database.close();
    d->knownObjects.clear();
}

bool DatabaseHandler::isConnected() const
{
    return d->database.isOpen();
}

bool DatabaseHandler::openDatabase(const QString& filePath)
{
    const bool connected = connectDatabase(filePath);
    if (connected) {
        QLOG_INFO() << "Connected to the database successfully.";
    } else {
        QLOG_ERROR() << "Unable to connect to the database!";
    }
    createCalendarInfoTable();
    createTaskStateIndex();
    createUniqueIndexForProjectsAndContexts();
    // Only for speed; without a connection they would only add failures to the log.
    if (connected) {
        enlargePages();
        createTaskListIndexes();
        updateQueryStatistics();
    }
    return connected;
}

void DatabaseHandler::createCalendarInfoTable()
{
    QSqlQuery query(d->database);
    const bool created = query.exec(QStringLiteral(
        "CREATE TABLE IF NOT EXISTS calendar_info (\"id\" Integer NOT NULL PRIMARY KEY AUTOINCREMENT, "
        "\"task_id\" Text NOT NULL, \"synced\" Boolean NOT NULL DEFAULT 0, \"updated\" Boolean NOT NULL "
        "DEFAULT 0)"));
    if (!created) {
        QLOG_ERROR() << "Unable to create calendar_info table: Reason: " << query.lastError().text();
    }
}

void DatabaseHandler::createTaskStateIndex()
{
    executeQuery(QStringLiteral("CREATE INDEX IF NOT EXISTS TaskStateIndex ON task(state)"));
}

void DatabaseHandler::createUniqueIndexForProjectsAndContexts()
{
    // The table constraint of project sits on project_id; this index is what keeps project ids unique.
    executeQuery(QStringLiteral("CREATE UNIQUE INDEX IF NOT EXISTS ProjectIdIndex ON project(id)"));
    executeQuery(QStringLiteral("CREATE UNIQUE INDEX IF NOT EXISTS ContextIdIndex ON context(id)"));
}

void DatabaseHandler::createTaskListIndexes()
{
    // A project's tasks are read with every column. An index that holds them all keeps a project's
    // rows on a few neighbouring pages, where the table would need a page of its own for nearly every
    // task; task_id keeps them in the table's order.
    executeQuery(QStringLiteral("DROP INDEX IF EXISTS TaskParentIndex"));
    executeQuery(
        QStringLiteral("CREATE INDEX IF NOT EXISTS TaskParentRowsIndex ON task(parent, task_id, state, id, "
                       "name, memo, start, due, context, timestamp, synced, local, period)"));
    executeQuery(QStringLiteral("CREATE INDEX IF NOT EXISTS TaskContextIndex ON task(context)"));
    // The daily plan reads every active repeating task at each refresh; they are a few among many.
    executeQuery(QStringLiteral(
        "CREATE INDEX IF NOT EXISTS TaskRepeatingIndex ON task(period) WHERE period <> \"\" AND STATE = 0"));
}

void DatabaseHandler::enlargePages()
{
    const int pageSize = executeCountQuery(QStringLiteral("PRAGMA page_size"));
    if (pageSize >= preferredPageSize)
        return;
    // A file takes a new page size only when VACUUM writes it anew; that happens once per file.
    QElapsedTimer timer;
    timer.start();
    const int cacheSize = executeCountQuery(QStringLiteral("PRAGMA cache_size"));
    const bool rewritten = executeQuery(QStringLiteral("PRAGMA page_size = %1").arg(preferredPageSize)) &&
                           executeQuery(QStringLiteral("VACUUM"));
    // The cache keeps the number of pages its size in KiB came to for the old page size, which for
    // pages four times as large would hold four times the memory; setting the size again recounts it.
    executeQuery(QStringLiteral("PRAGMA cache_size = %1").arg(cacheSize));
    if (rewritten) {
        QLOG_INFO() << "Database rewritten with pages of " << preferredPageSize << " bytes instead of "
                    << pageSize << " in " << timer.elapsed() << " ms";
    } else {
        QLOG_ERROR() << "Unable to rewrite the database with pages of " << preferredPageSize << " bytes";
    }
}

// Without statistics the planner takes TaskStateIndex for nearly every task query, although most
// rows are active: a lookup on it then fetches most of the table row by row. The statistics are made
// once, and again whenever the table has grown tenfold since.
void DatabaseHandler::updateQueryStatistics()
{
    const int taskCount = executeCountQuery(QStringLiteral("SELECT COUNT(*) FROM task"));
    const bool analyzed =
        executeCountQuery(QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE name = 'sqlite_stat1'")) >
        0;
    const int analyzedTaskCount =
        analyzed ? executeCountQuery(QStringLiteral(
                       "SELECT CAST(stat AS INTEGER) FROM sqlite_stat1 WHERE idx = 'TaskParentRowsIndex'"))
                 : 0;
    if (taskCount == 0 || (analyzedTaskCount > 0 && taskCount < 10 * analyzedTaskCount))
        return;
    executeQuery(QStringLiteral("ANALYZE"));
    // ANALYZE gives the average rows per state, a quarter of the table; what a query on state finds
    // is nearly always the active rows, which are most of it. With that figure the planner reads
    // the table straight through wherever the state is the only narrowing condition.
    const int activeTaskCount =
        executeCountQuery(QStringLiteral("SELECT COUNT(*) FROM task WHERE state = 0"));
    executeQuery(QStringLiteral("UPDATE sqlite_stat1 SET stat = ? WHERE idx = 'TaskStateIndex'"),
                 {QStringLiteral("%1 %2").arg(taskCount).arg(qMax(activeTaskCount, 1))});
    executeQuery(QStringLiteral("ANALYZE sqlite_master"));
}

bool DatabaseHandler::beginTransaction()
{
    const bool begun = d->database.transaction();
    QLOG_INFO() << "Begin transaction: " << (begun ? "true" : "false");
    if (begun)
        d->transactionOpen = true;
    return begun;
}

bool DatabaseHandler::commitChanges()
{
    if (d->database.commit()) {
        d->transactionOpen = false;
        QLOG_INFO() << "Changes successfully saved into DB.";
        return true;
    }
    QLOG_ERROR() << "Unable to save changes into DB. Error description: "
                 << d->database.lastError().databaseText();
    d->lastCreatedObjectId.clear();
    rollbackChanges();
    return false;
}

bool DatabaseHandler::rollbackChanges()
{
    d->lastCreatedObjectId.clear();
    // Whether or not the rollback succeeds, no transaction is left open after it.
    d->transactionOpen = false;
    const bool rolledBack = d->database.rollback();
    if (rolledBack) {
        QLOG_WARN() << "Rollback successfully completed.";
    } else {
        QLOG_ERROR() << "Unable to rollback changes. Error description: "
                     << d->database.lastError().databaseText();
    }
    return rolledBack;
}

bool DatabaseHandler::isTransactionOpen() const
{
    return d->transactionOpen;
}

QString DatabaseHandler::lastCreatedObjectId() const
{
    return d->lastCreatedObjectId;
}

bool DatabaseHandler::executeQuery(const QString& statement, const QVariantList& values)
{
    QSqlQuery query(d->database);
    if (Private::run(query, statement, values))
        return true;
    QLOG_ERROR() << "SQL query error: " << query.lastError().text();
    return false;
}

QList<QSqlRecord> DatabaseHandler::executeListQuery(const QString& statement, const QVariantList& values)
{
    QSqlQuery query(d->database);
    if (!Private::runReading(query, statement, values))
        return {};
    QList<QSqlRecord> records;
    while (query.next())
        records.append(query.record());
    return records;
}

QSqlRecord DatabaseHandler::executeRecordQuery(const QString& statement, const QVariantList& values)
{
    QSqlQuery query(d->database);
    if (!Private::runReading(query, statement, values))
        return {};
    return query.next() ? query.record() : QSqlRecord();
}

int DatabaseHandler::executeCountQuery(const QString& statement, const QVariantList& values)
{
    QSqlQuery query(d->database);
    if (!Private::runReading(query, statement, values))
        return 0;
    return query.next() ? query.value(0).toInt() : 0;
}

QString DatabaseHandler::placeholders(int count)
{
    QStringList marks;
    for (int i = 0; i < count; ++i)
        marks.append(QStringLiteral("?"));
    return marks.join(QLatin1Char(','));
}

int DatabaseHandler::executeListCountQuery(const QString& statement, const QStringList& ids)
{
    return executeCountQuery(statement.arg(placeholders(ids.size())), QVariantList(ids.cbegin(), ids.cend()));
}

QStringList DatabaseHandler::selectFirstColumn(const QString& statement, const QVariantList& values)
{
    QStringList column;
    for (const QSqlRecord& record : executeListQuery(statement, values))
        column.append(record.value(0).toString());
    return column;
}

// Rows become maps as they are stepped through, so a long list never exists as records as well.
QList<DataObject> DatabaseHandler::selectObjects(const QString& statement, const QVariantList& values)
{
    QSqlQuery query(d->database);
    if (!Private::runReading(query, statement, values))
        return {};
    RecordReader reader(query.record());
    const QList<DataObject> objects = reader.readAll(query, d->knownObjects);
    d->forgetUnheldObjects();
    return objects;
}

// Only the rowids are read first, which for a long list costs a fraction of reading its rows; the
// rows not in the cache are then read by rowid, or all at once when they are many.
QList<DataObject> DatabaseHandler::selectTaskRows(const QString& columns, const QString& condition,
                                                  const QVariantList& values)
{
    RowCache& cache = d->taskRows;
    cache.useColumns(columns);
    cache.checkOtherConnections();
    const QString fromCondition = QStringLiteral("FROM %1 %2").arg(cache.table(), condition);
    const QString withColumns = QStringLiteral("SELECT rowid, %1 %2").arg(columns, fromCondition);
    // With nothing cached, as after opening, the rows are read at once.
    const QVector<qint64> rowIds =
        cache.isEmpty() ? d->cacheTaskRows(withColumns, values)
                        : d->selectRowIds(QStringLiteral("SELECT rowid %1").arg(fromCondition), values);
    QVector<int> missing;
    QList<DataObject> objects = cache.objects(rowIds, missing);
    if (!missing.isEmpty()) {
        if (missing.size() > rowIds.size() / 4)
            d->cacheTaskRows(withColumns, values);
        else
            d->cacheTaskRowsById(columns, rowIds, missing);
        for (const int position : qAsConst(missing))
            objects[position] = cache.object(rowIds.at(position));
    }
    // Only a rowid beyond what the cache indexes stays missing: such rows are read as they are.
    const auto isMissing = [&objects](int position) { return objects.at(position).isEmpty(); };
    if (std::any_of(missing.cbegin(), missing.cend(), isMissing))
        return selectObjects(QStringLiteral("SELECT %1 %2").arg(columns, fromCondition), values);
    cache.forgetUnheld();
    return objects;
}

DataObject DatabaseHandler::selectObject(const QString& statement, const QVariantList& values)
{
    return DataObjectConverter::fromRecord(executeRecordQuery(statement, values));
}

bool DatabaseHandler::insertObject(DataObject object, const QString& table)
{
    const bool fromServer = object.contains(syncKey);
    QLOG_INFO() << "Creating an object in database..." << (fromServer ? "(Sync object)" : "");
    if (fromServer) {
        object.remove(syncKey);
        object.insert(syncedKey, true);
        object.insert(localKey, false);
    } else {
        object.insert(syncedKey, false);
        object.insert(localKey, true);
    }
    if (!object.contains(stateKey))
        object.insert(stateKey, DEFAULT_OBJECT_STATE);

    QStringList columns = object.keys();
    if (!columns.contains(idKey)) {
        columns.append(idKey);
        object.insert(idKey, DataObjectConverter::newId());
    }
    if (!columns.contains(timestampKey)) {
        columns.append(timestampKey);
        object.insert(timestampKey, DataObjectConverter::currentTimestamp());
    }
    QVariantList values;
    for (const QString& column : qAsConst(columns))
        values.append(object.value(column));
    const QString statement =
        QStringLiteral("INSERT INTO %1(%2) VALUES(%3)")
            .arg(table, columns.join(QLatin1Char(',')), DatabaseHandler::placeholders(columns.size()));

    // A server object belongs to the batch transaction that sync holds open.
    if (!fromServer)
        beginTransaction();
    const bool inserted = executeQuery(statement, values);
    if (inserted && !fromServer)
        d->lastCreatedObjectId = object.value(idKey).toString();
    return inserted;
}

bool DatabaseHandler::updateObject(DataObject object, const QString& table, uint& timestamp)
{
    QLOG_INFO() << "Updating the object in database...";
    if (object.contains(syncKey)) {
        timestamp = object.value(timestampKey).toUInt();
        object.remove(syncKey);
        object.insert(syncedKey, true);
    } else {
        timestamp = DataObjectConverter::currentTimestamp();
        object.insert(timestampKey, timestamp);
        object.insert(syncedKey, false);
    }

    QStringList assignments;
    QVariantList values;
    for (auto field = object.cbegin(); field != object.cend(); ++field) {
        assignments.append(field.key() + QStringLiteral("=?"));
        values.append(field.value());
    }
    values.append(object.value(idKey));
    const QString statement =
        QStringLiteral("UPDATE %1 SET %2 WHERE ID=?").arg(table, assignments.join(QLatin1Char(',')));
    return executeQuery(statement, values);
}

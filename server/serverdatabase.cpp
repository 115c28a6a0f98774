#include "serverdatabase.h"

#include "serverlog.h"

#include <QSqlError>
#include <QStringList>
#include <QThread>
#include <QUrl>
#include <QUrlQuery>

#include <atomic>

namespace {

QString driverName;
QString hostName;
int portNumber = -1;
QString databaseName;
QString userName;
QString password;
QString connectOptions;
std::atomic<int> connectionCounter{0};

// Removes the thread's connection when its thread ends.
struct ThreadConnection
{
    QString name;
    ~ThreadConnection()
    {
        if (name.isEmpty())
            return;
        QSqlDatabase::database(name, false).close();
        QSqlDatabase::removeDatabase(name);
    }
};

thread_local ThreadConnection threadConnection;

QStringList schemaStatements()
{
    const QString accountKey = ServerDatabase::isPostgres() ? QStringLiteral("BIGSERIAL PRIMARY KEY")
                                                            : QStringLiteral("INTEGER PRIMARY KEY");
    return {
        QStringLiteral("CREATE TABLE IF NOT EXISTS accounts (id %1, email TEXT NOT NULL UNIQUE, "
                       "password_hash TEXT NOT NULL, revision BIGINT NOT NULL, created BIGINT NOT NULL)")
            .arg(accountKey),
        QStringLiteral("CREATE TABLE IF NOT EXISTS objects (account_id BIGINT NOT NULL, kind TEXT NOT NULL, "
                       "id TEXT NOT NULL, parent TEXT NOT NULL, is_folder INTEGER NOT NULL, "
                       "state INTEGER NOT NULL, predefined INTEGER NOT NULL, inbox INTEGER NOT NULL, "
                       "timestamp BIGINT NOT NULL, revision BIGINT NOT NULL, body TEXT NOT NULL, "
                       "PRIMARY KEY (account_id, kind, id))"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS objects_by_revision ON objects (account_id, revision)"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS tokens (token_hash TEXT PRIMARY KEY, "
                       "account_id BIGINT NOT NULL, created BIGINT NOT NULL)"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS password_resets (token_hash TEXT PRIMARY KEY, "
                       "account_id BIGINT NOT NULL, expires BIGINT NOT NULL)"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS records (account_id BIGINT NOT NULL, store TEXT NOT NULL, "
                       "record_key TEXT NOT NULL, group_key TEXT NOT NULL, body TEXT NOT NULL, "
                       "last_changed BIGINT NOT NULL, deleted INTEGER NOT NULL, "
                       "PRIMARY KEY (account_id, store, record_key))"),
    };
}

bool configurePostgres(const QString& address, QString* error)
{
    const QUrl url(address, QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty()) {
        *error = QStringLiteral("The database address \"%1\" cannot be read")
                     .arg(url.toDisplayString(QUrl::RemovePassword));
        return false;
    }
    driverName = QStringLiteral("QPSQL");
    hostName = url.host();
    portNumber = url.port(5432);
    databaseName = url.path().mid(1);
    userName = url.userName();
    password = url.password();
    connectOptions = QUrlQuery(url).query().replace(QLatin1Char('&'), QLatin1Char(';'));
    if (databaseName.isEmpty())
        databaseName = QStringLiteral("norvel");
    return true;
}

} // namespace

bool ServerDatabase::configure(const QString& postgresAddress, const QString& sqliteFile, QString* error)
{
    if (!postgresAddress.isEmpty() && !configurePostgres(postgresAddress, error))
        return false;
    if (postgresAddress.isEmpty()) {
        driverName = QStringLiteral("QSQLITE");
        databaseName = sqliteFile;
        // Request threads write at the same time; they wait for each other instead of failing.
        connectOptions = QStringLiteral("QSQLITE_BUSY_TIMEOUT=10000");
    }
    if (!QSqlDatabase::isDriverAvailable(driverName)) {
        *error = QStringLiteral("The Qt SQL driver %1 is not installed").arg(driverName);
        return false;
    }
    return true;
}

bool ServerDatabase::isPostgres()
{
    return driverName == QLatin1String("QPSQL");
}

QSqlDatabase ServerDatabase::connection()
{
    if (threadConnection.name.isEmpty()) {
        threadConnection.name = QStringLiteral("norvel-server-%1").arg(++connectionCounter);
        QSqlDatabase database = QSqlDatabase::addDatabase(driverName, threadConnection.name);
        database.setDatabaseName(databaseName);
        database.setHostName(hostName);
        database.setPort(portNumber);
        database.setUserName(userName);
        database.setPassword(password);
        database.setConnectOptions(connectOptions);
    }
    QSqlDatabase database = QSqlDatabase::database(threadConnection.name, false);
    if (database.isOpen())
        return database;
    if (!database.open()) {
        qCCritical(serverLog) << "Cannot open the database:" << database.lastError().text();
        return database;
    }
    QSqlQuery pragma(database);
    if (!isPostgres()) {
        pragma.exec(QStringLiteral("PRAGMA journal_mode=WAL"));
        pragma.exec(QStringLiteral("PRAGMA synchronous=NORMAL"));
        pragma.exec(QStringLiteral("PRAGMA foreign_keys=ON"));
    }
    return database;
}

bool ServerDatabase::execute(QSqlQuery& query, const QString& statement, const QVariantList& values)
{
    // PostgreSQL cannot prepare schema statements, and a statement without values gains nothing by it.
    if (values.isEmpty()) {
        if (query.exec(statement))
            return true;
        qCCritical(serverLog) << "SQL query error:" << query.lastError().text() << statement;
        return false;
    }
    if (!query.prepare(statement)) {
        qCCritical(serverLog) << "SQL prepare error:" << query.lastError().text() << statement;
        return false;
    }
    for (const QVariant& value : values)
        query.addBindValue(value);
    if (query.exec())
        return true;
    qCCritical(serverLog) << "SQL query error:" << query.lastError().text() << statement;
    if (query.lastError().type() == QSqlError::ConnectionError)
        connection().close();
    return false;
}

bool ServerDatabase::createSchema(QString* error)
{
    QSqlDatabase database = connection();
    if (!database.isOpen()) {
        *error = QStringLiteral("Cannot open the database: %1").arg(database.lastError().text());
        return false;
    }
    ServerTransaction transaction;
    QSqlQuery query(database);
    // Servers starting together against one PostgreSQL would otherwise race on the catalogue.
    if (isPostgres() && !execute(query, QStringLiteral("SELECT pg_advisory_xact_lock(7310)"))) {
        *error = query.lastError().text();
        return false;
    }
    for (const QString& statement : schemaStatements()) {
        if (!execute(query, statement)) {
            *error = query.lastError().text();
            return false;
        }
    }
    if (!transaction.commit()) {
        *error = database.lastError().text();
        return false;
    }
    return true;
}

ServerTransaction::ServerTransaction()
{
    QSqlDatabase database = ServerDatabase::connection();
    m_active = database.isOpen() && database.transaction();
    if (database.isOpen() && !m_active)
        qCCritical(serverLog) << "Cannot begin a transaction:" << database.lastError().text();
}

ServerTransaction::~ServerTransaction()
{
    if (m_active)
        ServerDatabase::connection().rollback();
}

bool ServerTransaction::commit()
{
    if (!m_active)
        return false;
    m_active = false;
    QSqlDatabase database = ServerDatabase::connection();
    if (database.commit())
        return true;
    qCCritical(serverLog) << "Cannot commit:" << database.lastError().text();
    database.rollback();
    return false;
}

#include "testdatabase.h"

#include "store/databasehandler.h"
#include "utilities/helper.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace {
int nextFixtureNumber()
{
    static int number = 0;
    return ++number;
}

QList<QSqlRecord> runQuery(const QSqlDatabase& database, const QString& statement, const QVariantList& values)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    bool succeeded = query.prepare(statement);
    for (const QVariant& value : values)
        query.addBindValue(value);
    succeeded = succeeded && query.exec();
    if (!succeeded)
        qWarning("Test query failed: %s", qPrintable(query.lastError().text()));
    QList<QSqlRecord> records;
    while (query.next())
        records.append(query.record());
    return records;
}

QList<QVariantMap> toRows(const QList<QSqlRecord>& records)
{
    QList<QVariantMap> rows;
    for (const QSqlRecord& record : records) {
        QVariantMap row;
        for (int i = 0; i < record.count(); ++i)
            row.insert(record.fieldName(i), record.value(i));
        rows.append(row);
    }
    return rows;
}

QVariant firstValue(const QList<QSqlRecord>& records)
{
    return records.isEmpty() ? QVariant() : records.first().value(0);
}
} // namespace

struct TestDatabase::Private
{
    QTemporaryDir directory;
    QString filePath;
    QString connectionName;
    QString peerConnectionName;
    std::unique_ptr<DatabaseHandler> handler;
    bool ready = false;
    bool singletonAttached = false;
};

TestDatabase::TestDatabase(StartMode mode, const QString& connectOptions)
    : d(std::make_unique<Private>())
{
    const int number = nextFixtureNumber();
    d->filePath = d->directory.filePath(QStringLiteral("norvel_data.db"));
    d->connectionName = QStringLiteral("test_database_%1").arg(number);
    d->peerConnectionName = QStringLiteral("test_database_peer_%1").arg(number);

    const bool unpacked =
        QFile::copy(QStringLiteral(":/norvel_data.db"), d->filePath) &&
        QFile::setPermissions(d->filePath, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    d->handler = std::make_unique<DatabaseHandler>(d->connectionName);
    QSqlDatabase::database(d->connectionName, false).setConnectOptions(connectOptions);
    d->ready = unpacked && (mode == LeftClosed || d->handler->openDatabase(d->filePath));
}

TestDatabase::~TestDatabase()
{
    if (d->singletonAttached)
        DatabaseHandler::instance()->disconnectDatabase();
    d->handler.reset();
    if (QSqlDatabase::contains(d->peerConnectionName)) {
        QSqlDatabase::database(d->peerConnectionName, false).close();
        QSqlDatabase::removeDatabase(d->peerConnectionName);
    }
}

bool TestDatabase::isReady() const
{
    return d->ready;
}

QString TestDatabase::filePath() const
{
    return d->filePath;
}

QString TestDatabase::directoryPath() const
{
    return d->directory.path();
}

DatabaseHandler* TestDatabase::handler() const
{
    return d->handler.get();
}

QList<QVariantMap> TestDatabase::rows(const QString& statement, const QVariantList& values) const
{
    return toRows(runQuery(QSqlDatabase::database(d->connectionName, false), statement, values));
}

QVariant TestDatabase::value(const QString& statement, const QVariantList& values) const
{
    return firstValue(runQuery(QSqlDatabase::database(d->connectionName, false), statement, values));
}

QList<QVariantMap> TestDatabase::committedRows(const QString& statement, const QVariantList& values)
{
    return toRows(runQuery(peerConnection(), statement, values));
}

QVariant TestDatabase::committedValue(const QString& statement, const QVariantList& values)
{
    return firstValue(runQuery(peerConnection(), statement, values));
}

QSqlDatabase TestDatabase::peerConnection()
{
    if (QSqlDatabase::contains(d->peerConnectionName))
        return QSqlDatabase::database(d->peerConnectionName);
    QSqlDatabase peer = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), d->peerConnectionName);
    peer.setDatabaseName(d->filePath);
    peer.open();
    return peer;
}

bool TestDatabase::attachSingleton()
{
    d->singletonAttached = true;
    return DatabaseHandler::instance()->openDatabase(d->filePath);
}

bool TestDatabase::unpackApplicationDatabase()
{
    return QDir().mkpath(QFileInfo(Helper::instance()->databaseFilePath()).path()) &&
           Helper::instance()->unpackDatabase();
}

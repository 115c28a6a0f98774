#pragma once

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QTemporaryDir>
#include <QVariant>
#include <QVariantMap>

#include <memory>

class DatabaseHandler;

// A fresh copy of the seed database in a temporary directory, with a DatabaseHandler of its own
// (under a connection name of its own) on it. Gone with the fixture.
class TestDatabase
{
public:
    enum StartMode {
        OpenedAsAtStart, // handler() has run openDatabase: calendar_info and the indexes exist
        LeftClosed       // only the file exists; the test connects or opens handler() itself
    };

    // connectOptions go to the handler's connection before it opens, e.g. "QSQLITE_BUSY_TIMEOUT=0".
    explicit TestDatabase(StartMode mode = OpenedAsAtStart, const QString& connectOptions = QString());
    ~TestDatabase();
    TestDatabase(const TestDatabase&) = delete;
    TestDatabase& operator=(const TestDatabase&) = delete;

    // False when the seed could not be unpacked or the handler could not connect as asked.
    bool isReady() const;
    QString filePath() const;
    QString directoryPath() const;
    DatabaseHandler* handler() const;

    // Rows and values as the handler's connection sees them, its open transaction included. Keys are
    // the column names as the statement gives them, values raw as SQLite holds them.
    QList<QVariantMap> rows(const QString& statement, const QVariantList& values = {}) const;
    QVariant value(const QString& statement, const QVariantList& values = {}) const;

    // The same through a second connection to the file, which sees committed data only: what another
    // process, or the next start, would find.
    QList<QVariantMap> committedRows(const QString& statement, const QVariantList& values = {});
    QVariant committedValue(const QString& statement, const QVariantList& values = {});
    // That second connection, opened on first use, for tests that need to hold locks.
    QSqlDatabase peerConnection();

    // Points DatabaseHandler::instance() at this file (openDatabase) for code that works through the
    // singleton; the singleton is disconnected again when the fixture ends.
    bool attachSingleton();

    // Unpacks the seed where the application keeps its database, for tests that go through
    // DataManager::instance() and so through the application's own file.
    static bool unpackApplicationDatabase();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

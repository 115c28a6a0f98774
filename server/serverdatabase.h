#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>

// The server's one database, SQLite or PostgreSQL, reached through one connection per request
// thread: Qt's connections must stay on the thread that opened them.
class ServerDatabase
{
public:
    // Call once, before any request thread starts. An empty address means the SQLite file.
    static bool configure(const QString& postgresAddress, const QString& sqliteFile, QString* error);
    // Creates the tables that are missing; several servers may start against one database at once.
    static bool createSchema(QString* error);
    static bool isPostgres();

    // The calling thread's connection, opened on first use and reopened after a lost connection.
    static QSqlDatabase connection();
    // Runs a statement with positional values on the thread's connection. Failures are logged, and
    // a failure of the connection itself closes it so that the next request reconnects.
    static bool execute(QSqlQuery& query, const QString& statement, const QVariantList& values = {});
};

// A transaction on the thread's connection that rolls back unless committed.
class ServerTransaction
{
public:
    ServerTransaction();
    ~ServerTransaction();
    ServerTransaction(const ServerTransaction&) = delete;
    ServerTransaction& operator=(const ServerTransaction&) = delete;

    bool isActive() const { return m_active; }
    bool commit();

private:
    bool m_active = false;
};

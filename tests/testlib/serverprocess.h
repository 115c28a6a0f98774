#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

// The real norvel-server on a free loopback port, with a fresh SQLite file in a temporary data
// directory unless a PostgreSQL address is given. Stopped when destroyed.
class ServerProcess
{
public:
    ServerProcess();
    ~ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    // Returns once the server listens; false (with its output in the test log) otherwise.
    bool start(const QString& databaseAddress = QString(), const QStringList& extraArguments = {});
    void stop();

    // Ends in "/api", as the client's base address does.
    QString baseUrl() const;
    // Where mail lands without a mail server.
    QString outboxDirectory() const;

private:
    QProcess m_process;
    QTemporaryDir m_dataDirectory;
    QString m_baseUrl;
};

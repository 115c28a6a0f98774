#pragma once

#include <QString>
#include <QTemporaryDir>

// A throwaway PostgreSQL cluster on a loopback port, made with initdb in a temporary directory and
// run by an unprivileged user (initdb refuses root). Stopped and removed when destroyed.
class PostgresqlCluster
{
public:
    PostgresqlCluster();
    ~PostgresqlCluster();
    PostgresqlCluster(const PostgresqlCluster&) = delete;
    PostgresqlCluster& operator=(const PostgresqlCluster&) = delete;

    // Empty when the PostgreSQL server programs are not installed.
    static QString binDirectory();

    bool start(QString* error);
    // postgresql://norvel@127.0.0.1:<port>/postgres
    QString address() const;

private:
    bool run(const QString& program, const QStringList& arguments, QString* error) const;

    QTemporaryDir m_directory;
    int m_port = 0;
    bool m_running = false;
};

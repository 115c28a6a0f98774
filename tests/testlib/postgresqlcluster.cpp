#include "postgresqlcluster.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTcpServer>

#include <pwd.h>
#include <unistd.h>

namespace {

constexpr const char* unprivilegedUser = "nobody";

int freeLoopbackPort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

bool runsAsRoot()
{
    return geteuid() == 0;
}

} // namespace

PostgresqlCluster::PostgresqlCluster() = default;

PostgresqlCluster::~PostgresqlCluster()
{
    if (m_running) {
        QString ignored;
        run(QStringLiteral("pg_ctl"),
            {QStringLiteral("-D"), m_directory.filePath(QStringLiteral("data")), QStringLiteral("-m"),
             QStringLiteral("immediate"), QStringLiteral("-w"), QStringLiteral("stop")},
            &ignored);
    }
}

QString PostgresqlCluster::binDirectory()
{
    const QStringList versions =
        QDir(QStringLiteral("/usr/lib/postgresql"))
            .entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed);
    for (const QString& version : versions) {
        const QString bin = QStringLiteral("/usr/lib/postgresql/%1/bin").arg(version);
        if (QFile::exists(bin + QStringLiteral("/initdb")) && QFile::exists(bin + QStringLiteral("/pg_ctl")))
            return bin;
    }
    return QString();
}

bool PostgresqlCluster::run(const QString& program, const QStringList& arguments, QString* error) const
{
    QStringList command{binDirectory() + QLatin1Char('/') + program};
    command += arguments;
    QProcess process;
    if (runsAsRoot())
        process.start(
            QStringLiteral("runuser"),
            QStringList{QStringLiteral("-u"), QLatin1String(unprivilegedUser), QStringLiteral("--")} +
                command);
    else
        process.start(command.takeFirst(), command);
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0) {
        *error = program + QStringLiteral(" failed: ") +
                 QString::fromLocal8Bit(process.readAllStandardError()) +
                 QString::fromLocal8Bit(process.readAllStandardOutput());
        return false;
    }
    return true;
}

bool PostgresqlCluster::start(QString* error)
{
    if (runsAsRoot()) {
        const passwd* user = getpwnam(unprivilegedUser);
        if (!user ||
            chown(QFile::encodeName(m_directory.path()).constData(), user->pw_uid, user->pw_gid) != 0) {
            *error = QStringLiteral("Cannot hand the cluster directory to %1")
                         .arg(QLatin1String(unprivilegedUser));
            return false;
        }
    }
    const QString data = m_directory.filePath(QStringLiteral("data"));
    if (!run(QStringLiteral("initdb"),
             {QStringLiteral("-D"), data, QStringLiteral("-U"), QStringLiteral("norvel"),
              QStringLiteral("-A"), QStringLiteral("trust"), QStringLiteral("-E"), QStringLiteral("UTF8"),
              QStringLiteral("--no-locale"), QStringLiteral("--no-sync")},
             error))
        return false;
    m_port = freeLoopbackPort();
    const QString options = QStringLiteral("-p %1 -k %2 -c listen_addresses=127.0.0.1 -c fsync=off")
                                .arg(m_port)
                                .arg(m_directory.path());
    m_running = run(QStringLiteral("pg_ctl"),
                    {QStringLiteral("-D"), data, QStringLiteral("-o"), options, QStringLiteral("-l"),
                     m_directory.filePath(QStringLiteral("server.log")), QStringLiteral("-w"),
                     QStringLiteral("start")},
                    error);
    return m_running;
}

QString PostgresqlCluster::address() const
{
    return QStringLiteral("postgresql://norvel@127.0.0.1:%1/postgres").arg(m_port);
}

#include "serverprocess.h"

#include <QDeadlineTimer>
#include <QDebug>

ServerProcess::ServerProcess() = default;

ServerProcess::~ServerProcess()
{
    stop();
}

bool ServerProcess::start(const QString& databaseAddress, const QStringList& extraArguments)
{
    QStringList arguments{QStringLiteral("--port"),      QStringLiteral("0"),
                          QStringLiteral("--data-dir"),  m_dataDirectory.path(),
                          QStringLiteral("--log-level"), QStringLiteral("warning")};
    if (!databaseAddress.isEmpty())
        arguments << QStringLiteral("--database") << databaseAddress;
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(NORVEL_SERVER_PATH), arguments + extraArguments);
    const QByteArray marker = "Listening on ";
    QByteArray output;
    QDeadlineTimer deadline(30000);
    while (!output.contains('\n') && !deadline.hasExpired() && m_process.state() != QProcess::NotRunning) {
        m_process.waitForReadyRead(100);
        output += m_process.readAllStandardOutput();
    }
    const int start = output.indexOf(marker);
    if (start < 0) {
        qWarning() << "norvel-server did not start:" << output;
        return false;
    }
    m_baseUrl = QString::fromUtf8(output.mid(start + marker.size()).trimmed());
    return true;
}

void ServerProcess::stop()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(10000))
        m_process.kill();
    m_process.waitForFinished();
}

QString ServerProcess::baseUrl() const
{
    return m_baseUrl;
}

QString ServerProcess::outboxDirectory() const
{
    return m_dataDirectory.filePath(QStringLiteral("outbox"));
}

#include "privatesessionbus.h"

namespace {
constexpr int startTimeoutMilliseconds = 10000;
}

PrivateSessionBus::PrivateSessionBus()
{
    // The daemon complains on stderr about resource limits it may not raise; only the address matters.
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    m_daemon.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                   QStringLiteral("--print-address")});
    if (!m_daemon.waitForStarted(startTimeoutMilliseconds))
        return;
    while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead(startTimeoutMilliseconds)) {
    }
    m_address = QString::fromLocal8Bit(m_daemon.readLine()).trimmed();
}

PrivateSessionBus::~PrivateSessionBus()
{
    if (m_daemon.state() == QProcess::NotRunning)
        return;
    m_daemon.terminate();
    if (!m_daemon.waitForFinished(startTimeoutMilliseconds))
        m_daemon.kill();
    m_daemon.waitForFinished();
}

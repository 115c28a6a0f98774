#include "desktopmailhandler.h"

#include "core/logmanager.h"

#include <QProcess>

namespace {
// xdg-mime answers from a few small files; a desktop that takes longer is treated as naming none
// rather than freezing the window that asked.
constexpr int queryTimeoutMilliseconds = 3000;
} // namespace

QString DesktopMailHandler::defaultHandler()
{
    QProcess query;
    query.setProcessChannelMode(QProcess::SeparateChannels);
    query.start(
        QStringLiteral("xdg-mime"),
        {QStringLiteral("query"), QStringLiteral("default"), QStringLiteral("x-scheme-handler/mailto")},
        QIODevice::ReadOnly);
    if (!query.waitForFinished(queryTimeoutMilliseconds)) {
        QLOG_WARN() << "Unable to query the default mail application: " << query.errorString();
        query.kill();
        query.waitForFinished();
        return QString();
    }
    if (query.exitStatus() != QProcess::NormalExit || query.exitCode() != 0)
        return QString();
    return QString::fromLocal8Bit(query.readAllStandardOutput()).trimmed();
}

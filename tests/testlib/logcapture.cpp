#include "logcapture.h"

#include "core/logfiledestination.h"
#include "core/logmanager.h"

#include <QFile>
#include <QRegularExpression>

namespace {
// A line reads "<level, 5 wide> <local ISO time> <message>"; a message may go on over further lines.
const QRegularExpression entryPattern(QStringLiteral("^(TRACE|DEBUG|INFO|WARN|ERROR|FATAL) ? \\S+ (.*)$"));
} // namespace

LogCapture::LogCapture()
    : m_destination(std::make_shared<LogFileDestination>(m_directory.filePath(QStringLiteral("captured.log")),
                                                         LogFileDestination::DisableLogRotation, 0, 0))
{
    LogManager::instance().addDestination(m_destination);
}

LogCapture::~LogCapture()
{
    LogManager::instance().removeDestination(m_destination);
}

QStringList LogCapture::messages() const
{
    return messages(QString());
}

QStringList LogCapture::messages(const QString& level) const
{
    QFile file(m_directory.filePath(QStringLiteral("captured.log")));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QString text = QString::fromUtf8(file.readAll());
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);

    QStringList result;
    bool entryWanted = false;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        const QRegularExpressionMatch entry = entryPattern.match(line);
        if (entry.hasMatch()) {
            entryWanted = level.isEmpty() || entry.captured(1) == level;
            if (entryWanted)
                result.append(entry.captured(2));
        } else if (entryWanted && !result.isEmpty()) {
            result.last() += QLatin1Char('\n') + line;
        }
    }
    return result;
}

bool LogCapture::contains(const QString& message) const
{
    return messages().contains(message);
}

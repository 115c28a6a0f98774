#include "logmanager.h"

#include "logfiledestination.h"

#include <QDateTime>
#include <QMutex>
#include <QMutexLocker>
#include <QVector>

#include <atomic>

struct LogManager::Private
{
    std::atomic<int> level{DebugLevel};
    QMutex mutex;
    QVector<std::shared_ptr<LogFileDestination>> destinations;
};

LogManager::LogManager()
    : d(std::make_unique<Private>())
{}

LogManager::~LogManager() = default;

LogManager& LogManager::instance()
{
    static LogManager* logger = new LogManager;
    return *logger;
}

LogManager::Level LogManager::loggingLevel() const
{
    return static_cast<Level>(d->level.load());
}

void LogManager::setLoggingLevel(Level level)
{
    d->level = level;
}

void LogManager::addDestination(const std::shared_ptr<LogFileDestination>& destination)
{
    QMutexLocker locker(&d->mutex);
    d->destinations.append(destination);
}

void LogManager::removeDestination(const std::shared_ptr<LogFileDestination>& destination)
{
    QMutexLocker locker(&d->mutex);
    d->destinations.removeAll(destination);
}

void LogManager::write(Level level, const QString& message)
{
    // A destination that fails makes Qt warn, and Qt's warnings come back here; taking the lock a
    // second time on the same thread would stop every thread that logs. Such lines are dropped.
    thread_local bool writing = false;
    if (writing)
        return;
    writing = true;
    writeLine(level, message);
    writing = false;
}

void LogManager::writeLine(Level level, const QString& message)
{
    // Log lines carry the real time, also when a test has pinned the program's clock.
    const QString line =
        QStringLiteral("%1 %2 %3")
            .arg(levelName(level), QDateTime::currentDateTime().toString(Qt::ISODateWithMs), message);
    QMutexLocker locker(&d->mutex);
    for (const auto& destination : qAsConst(d->destinations))
        destination->write(line);
}

QString LogManager::levelName(Level level)
{
    switch (level) {
    case TraceLevel:
        return QStringLiteral("TRACE");
    case DebugLevel:
        return QStringLiteral("DEBUG");
    case InfoLevel:
        return QStringLiteral("INFO ");
    case WarnLevel:
        return QStringLiteral("WARN ");
    case ErrorLevel:
        return QStringLiteral("ERROR");
    case FatalLevel:
        return QStringLiteral("FATAL");
    case OffLevel:
        break;
    }
    return QString();
}

LogMessage::LogMessage(LogManager::Level level)
    : m_level(level)
    , m_stream(&m_text)
{
    m_stream.noquote().nospace();
}

LogMessage::~LogMessage()
{
    LogManager::instance().write(m_level, m_text);
}

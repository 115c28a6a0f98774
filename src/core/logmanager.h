#pragma once

#include <QDebug>
#include <QString>

#include <memory>

class LogFileDestination;

// The process-wide logger. Every part of the program writes through the QLOG_* stream macros
// below; lines below the logger's level cost one comparison and are never formatted.
class LogManager
{
public:
    enum Level { TraceLevel = 0, DebugLevel, InfoLevel, WarnLevel, ErrorLevel, FatalLevel, OffLevel };

    static LogManager& instance();

    Level loggingLevel() const;
    void setLoggingLevel(Level level);
    bool isEnabled(Level level) const { return loggingLevel() <= level; }

    void addDestination(const std::shared_ptr<LogFileDestination>& destination);
    void removeDestination(const std::shared_ptr<LogFileDestination>& destination);
    void write(Level level, const QString& message);

    static QString levelName(Level level);

private:
    LogManager();
    void writeLine(Level level, const QString& message);
    ~LogManager();
    LogManager(const LogManager&) = delete;
    LogManager& operator=(const LogManager&) = delete;

    struct Private;
    std::unique_ptr<Private> d;
};

// One log line in the making; the line is written when the object goes out of scope.
class LogMessage
{
public:
    explicit LogMessage(LogManager::Level level);
    ~LogMessage();
    LogMessage(const LogMessage&) = delete;
    LogMessage& operator=(const LogMessage&) = delete;

    QDebug& stream() { return m_stream; }

private:
    LogManager::Level m_level;
    QString m_text;
    QDebug m_stream;
};

#define NORVEL_LOG_AT(level)                                                                                 \
    if (!LogManager::instance().isEnabled(level)) {                                                          \
    } else                                                                                                   \
        LogMessage(level).stream()

#define QLOG_TRACE() NORVEL_LOG_AT(LogManager::TraceLevel)
#define QLOG_DEBUG() NORVEL_LOG_AT(LogManager::DebugLevel)
#define QLOG_INFO() NORVEL_LOG_AT(LogManager::InfoLevel)
#define QLOG_WARN() NORVEL_LOG_AT(LogManager::WarnLevel)
#define QLOG_ERROR() NORVEL_LOG_AT(LogManager::ErrorLevel)
#define QLOG_FATAL() NORVEL_LOG_AT(LogManager::FatalLevel)

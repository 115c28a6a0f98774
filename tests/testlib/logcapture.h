#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

class LogFileDestination;

// Collects every log line written while it exists, through a log file of its own.
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    // The messages so far, without level and time.
    QStringList messages() const;
    // Messages at a level, named as the log writes it ("INFO", "WARN", "ERROR", ...).
    QStringList messages(const QString& level) const;
    bool contains(const QString& message) const;

private:
    QTemporaryDir m_directory;
    std::shared_ptr<LogFileDestination> m_destination;
};

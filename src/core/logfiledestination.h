#pragma once

#include <QString>

#include <memory>

// A log file that starts afresh once it would grow past a size limit, keeping at most a given
// number of older files beside it as "<name>.1", "<name>.2", ...
class LogFileDestination
{
public:
    enum RotationMode { DisableLogRotation, EnableLogRotation };

    LogFileDestination(const QString& filePath, RotationMode rotation, qint64 maxSizeBytes,
                       int maxOldLogCount);
    ~LogFileDestination();
    LogFileDestination(const LogFileDestination&) = delete;
    LogFileDestination& operator=(const LogFileDestination&) = delete;

    bool isOpen() const;
    void write(const QString& line);

private:
    void rotate();

    struct Private;
    std::unique_ptr<Private> d;
};

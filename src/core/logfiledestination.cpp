#include "logfiledestination.h"

#include <QFile>

struct LogFileDestination::Private
{
    QFile file;
    RotationMode rotation = DisableLogRotation;
    qint64 maxSizeBytes = 0;
    int maxOldLogCount = 0;
};

LogFileDestination::LogFileDestination(const QString& filePath, RotationMode rotation, qint64 maxSizeBytes,
                                       int maxOldLogCount)
    : d(std::make_unique<Private>())
{
    d->file.setFileName(filePath);
    d->rotation = rotation;
    d->maxSizeBytes = maxSizeBytes;
    d->maxOldLogCount = qMax(0, maxOldLogCount);
    d->file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text);
}

LogFileDestination::~LogFileDestination() = default;

bool LogFileDestination::isOpen() const
{
    return d->file.isOpen();
}

void LogFileDestination::write(const QString& line)
{
    if (!d->file.isOpen())
        return;
    const QByteArray bytes = line.toUtf8() + '\n';
    if (d->rotation == EnableLogRotation && d->file.size() + bytes.size() > d->maxSizeBytes)
        rotate();
    if (!d->file.isOpen())
        return;
    d->file.write(bytes);
    d->file.flush();
}

void LogFileDestination::rotate()
{
    const QString path = d->file.fileName();
    d->file.close();
    const auto oldLogPath = [&path](int number) { return QStringLiteral("%1.%2").arg(path).arg(number); };
    if (d->maxOldLogCount == 0) {
        QFile::remove(path);
    } else {
        QFile::remove(oldLogPath(d->maxOldLogCount));
        for (int number = d->maxOldLogCount - 1; number >= 1; --number)
            QFile::rename(oldLogPath(number), oldLogPath(number + 1));
        QFile::rename(path, oldLogPath(1));
    }
    d->file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text);
}

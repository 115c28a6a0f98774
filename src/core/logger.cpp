#include "logger.h"

#include "logmanager.h"

#include <cstdlib>

void handleQtMessages(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    Q_UNUSED(context)
    switch (type) {
    case QtDebugMsg:
        QLOG_DEBUG() << message;
        break;
    case QtInfoMsg:
        QLOG_INFO() << message;
        break;
    case QtWarningMsg:
        QLOG_WARN() << message;
        break;
    case QtCriticalMsg:
        QLOG_ERROR() << message;
        break;
    case QtFatalMsg:
        QLOG_FATAL() << message;
        std::abort();
    }
}

Logger::Logger(QObject* parent)
    : QObject(parent)
{}

void Logger::info(const QString& message)
{
    QLOG_INFO() << toQmlLogString(message);
}

void Logger::warning(const QString& message)
{
    QLOG_WARN() << toQmlLogString(message);
}

void Logger::error(const QString& message)
{
    QLOG_ERROR() << toQmlLogString(message);
}

QString Logger::toQmlLogString(const QString& message)
{
    return QStringLiteral("QML side: %1").arg(message);
}

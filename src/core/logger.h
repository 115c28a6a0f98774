#pragma once

#include <QObject>
#include <QString>

// Routes Qt's own messages into the program log at the matching level.
void handleQtMessages(QtMsgType type, const QMessageLogContext& context, const QString& message);

// The log as QML sees it: lines written from QML are marked as such.
class Logger : public QObject
{
    Q_OBJECT

public:
    explicit Logger(QObject* parent = nullptr);

    Q_INVOKABLE void info(const QString& message);
    Q_INVOKABLE void warning(const QString& message);
    Q_INVOKABLE void error(const QString& message);

private:
    static QString toQmlLogString(const QString& message);
};

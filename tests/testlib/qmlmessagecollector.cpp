#include "qmlmessagecollector.h"

#include <QString>

namespace {
QtMessageHandler previousHandler = nullptr;
QStringList collected;

bool comesFromQml(const QMessageLogContext& context, const QString& message)
{
    const QByteArray category(context.category ? context.category : "");
    return category.startsWith("qml") || category.startsWith("js") ||
           message.contains(QLatin1String("qrc:/")) || message.contains(QLatin1String("QML"));
}

void collect(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type != QtDebugMsg && type != QtInfoMsg && comesFromQml(context, message))
        collected.append(message);
    if (previousHandler)
        previousHandler(type, context, message);
}
} // namespace

QmlMessageCollector::QmlMessageCollector()
{
    collected.clear();
    previousHandler = qInstallMessageHandler(collect);
}

QmlMessageCollector::~QmlMessageCollector()
{
    qInstallMessageHandler(previousHandler);
    previousHandler = nullptr;
}

QStringList QmlMessageCollector::messages() const
{
    return collected;
}

void QmlMessageCollector::clear()
{
    collected.clear();
}

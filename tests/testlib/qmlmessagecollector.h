#pragma once

#include <QStringList>
#include <QtGlobal>

// Collects every warning and error that QML and its scripts print while it exists, so that a test
// of the interface can fail on the first binding error, type error or failed load. Other messages
// go on to the handler that was installed before.
class QmlMessageCollector
{
public:
    QmlMessageCollector();
    ~QmlMessageCollector();
    QmlMessageCollector(const QmlMessageCollector&) = delete;
    QmlMessageCollector& operator=(const QmlMessageCollector&) = delete;

    QStringList messages() const;
    void clear();
};

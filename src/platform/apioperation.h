#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

#include <memory>

class QNetworkReply;

// One call of the revision protocol, started by ApiHandler. It finishes once, on the thread it lives
// on, with either a network failure (networkErrorCode() not 0) or the server's answer: its code (-1
// for success), text, clock and result.
class ApiOperation : public QObject
{
    Q_OBJECT

public:
    // Takes over the reply and ends it when done.
    explicit ApiOperation(QNetworkReply* reply, QObject* parent = nullptr);
    ~ApiOperation() override;

    // A QNetworkReply::NetworkError value; 0 when the server's answer was read.
    int networkErrorCode() const;
    // The server's code, -1 for success; 0 while there is no answer.
    int errorCode() const;
    QString errorText() const;
    // For getChanges a list: the revision, then one map per object; for object calls the revision.
    QVariant result() const;
    // The server's clock in seconds since 1970 (UTC), from every answer.
    int serverTime() const;
    // finished() is emitted once only: a caller that comes late asks here instead of waiting.
    bool isFinished() const;

signals:
    void finished();

private:
    void handleReply();

    struct Private;
    std::unique_ptr<Private> d;
};

#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>

class QNetworkReply;
class QTimer;

// The frame of the REST syncs (favorites, sorted lists, reminders): one run at a time, a token first
// when there is none, then the subclass's own requests until it calls setSyncActive(false).
class BaseSyncManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool inProgress READ inProgress NOTIFY inProgressChanged)

public:
    explicit BaseSyncManager(QObject* parent = nullptr);
    ~BaseSyncManager() override;

    bool inProgress() const;

public slots:
    void sync();

signals:
    void completed();
    void inProgressChanged(bool inProgress);

protected:
    virtual QString apiEndpoint() const = 0;
    virtual void handleSync() = 0;
    virtual void performSendRequest() = 0;
    virtual void performDeleteRequest() = 0;
    virtual void performGetRequest() = 0;
    virtual void handleServerObjects(const QJsonArray& objects) = 0;

    // Emits inProgressChanged on every call, and completed() when the run ends.
    void setSyncActive(bool active);
    QNetworkReply* createGetRequest(const QUrl& url) const;
    QNetworkReply* createPostRequest(const QUrl& url, const QByteArray& body) const;
    // The base address, then "/" with apiEndpoint(), then path, e.g. "/v1/delete/".
    QUrl endpointUrl(const QString& path) const;
    // Ends the reply when it finishes. A failure is logged as "Server Error (<logName>): " and ends
    // the run; a success hands the body on.
    void handleReply(QNetworkReply* reply, const QString& logName,
                     std::function<void(const QByteArray&)> onSuccess);
    // Single-shot, for subclasses that gather changes before a run.
    QTimer* timer() const;

private:
    void handleTokenReceived();
    void handleTokenFailure();

    struct Private;
    std::unique_ptr<Private> d;
};

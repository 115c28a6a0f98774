#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QUrl>

#include <memory>

class QNetworkReply;

// A plain HTTP sender. Its network access is made on the first request, on the thread of that
// request, which is where the replies then arrive; the caller ends each reply with deleteLater().
class NetworkHandler
{
public:
    using Headers = QList<QPair<QByteArray, QByteArray>>;

    NetworkHandler();
    ~NetworkHandler();
    NetworkHandler(const NetworkHandler&) = delete;
    NetworkHandler& operator=(const NetworkHandler&) = delete;

    QNetworkReply* sendGetRequest(const QUrl& url, const Headers& headers);
    QNetworkReply* sendPostRequest(const QUrl& url, const QByteArray& body, const Headers& headers);
    QNetworkReply* sendPutRequest(const QUrl& url, const QByteArray& body, const Headers& headers);
    QNetworkReply* sendPatchRequest(const QUrl& url, const QByteArray& body, const Headers& headers);
    QNetworkReply* sendDeleteRequest(const QUrl& url, const Headers& headers);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

#include "networkhandler.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace {

constexpr int transferTimeoutMilliseconds = 60000;

QNetworkRequest makeRequest(const QUrl& url, const NetworkHandler::Headers& headers)
{
    QNetworkRequest request(url);
    for (const auto& header : headers)
        request.setRawHeader(header.first, header.second);
    request.setTransferTimeout(transferTimeoutMilliseconds);
    return request;
}

} // namespace

struct NetworkHandler::Private
{
    std::unique_ptr<QNetworkAccessManager> network;

    QNetworkAccessManager* manager()
    {
        if (!network)
            network = std::make_unique<QNetworkAccessManager>();
        return network.get();
    }
};

NetworkHandler::NetworkHandler()
    : d(std::make_unique<Private>())
{}

NetworkHandler::~NetworkHandler() = default;

QNetworkReply* NetworkHandler::sendGetRequest(const QUrl& url, const Headers& headers)
{
    return d->manager()->get(makeRequest(url, headers));
}

QNetworkReply* NetworkHandler::sendPostRequest(const QUrl& url, const QByteArray& body,
                                               const Headers& headers)
{
    return d->manager()->post(makeRequest(url, headers), body);
}

QNetworkReply* NetworkHandler::sendPutRequest(const QUrl& url, const QByteArray& body, const Headers& headers)
{
    return d->manager()->put(makeRequest(url, headers), body);
}

QNetworkReply* NetworkHandler::sendPatchRequest(const QUrl& url, const QByteArray& body,
                                                const Headers& headers)
{
    return d->manager()->sendCustomRequest(makeRequest(url, headers), QByteArrayLiteral("PATCH"), body);
}

QNetworkReply* NetworkHandler::sendDeleteRequest(const QUrl& url, const Headers& headers)
{
    return d->manager()->deleteResource(makeRequest(url, headers));
}

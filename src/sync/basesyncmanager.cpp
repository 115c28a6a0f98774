#include "basesyncmanager.h"

#include "core/logmanager.h"
#include "core/settings.h"
#include "platform/networkhandler.h"
#include "sync/authmanager.h"

#include <QNetworkReply>
#include <QTimer>

struct BaseSyncManager::Private
{
    bool syncActive = false;
    QTimer* timer = nullptr;
    NetworkHandler network;
    QMetaObject::Connection tokenConnection;
};

BaseSyncManager::BaseSyncManager(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->timer = new QTimer(this);
    d->timer->setSingleShot(true);
    connect(AuthManager::instance(), &AuthManager::serverError, this, &BaseSyncManager::handleTokenFailure);
}

BaseSyncManager::~BaseSyncManager() = default;

bool BaseSyncManager::inProgress() const
{
    return d->syncActive;
}

void BaseSyncManager::sync()
{
    const Settings* settings = Settings::instance();
    if (settings->clientLogin().isEmpty() || settings->clientPassword().isEmpty() || d->syncActive)
        return;
    d->timer->stop();
    setSyncActive(true);
    if (AuthManager::instance()->hasToken()) {
        handleSync();
        return;
    }
    if (!d->tokenConnection)
        d->tokenConnection = connect(AuthManager::instance(), &AuthManager::authTokenReceived, this,
                                     &BaseSyncManager::handleTokenReceived);
    // The token is asked for on the thread of the account manager, which owns its network access;
    // the managers on the database thread hear the answer through a queued signal.
    QMetaObject::invokeMethod(AuthManager::instance(), &AuthManager::requestToken);
}

void BaseSyncManager::handleTokenReceived()
{
    disconnect(d->tokenConnection);
    if (d->syncActive)
        handleSync();
}

void BaseSyncManager::handleTokenFailure()
{
    disconnect(d->tokenConnection);
    if (d->syncActive)
        setSyncActive(false);
}

void BaseSyncManager::setSyncActive(bool active)
{
    d->syncActive = active;
    emit inProgressChanged(active);
    if (!active)
        emit completed();
}

QNetworkReply* BaseSyncManager::createGetRequest(const QUrl& url) const
{
    auto headers = AuthManager::defaultHeaders();
    headers.append(
        {QByteArrayLiteral("Authorization"), "Token " + AuthManager::instance()->token().toUtf8()});
    return d->network.sendGetRequest(url, headers);
}

QNetworkReply* BaseSyncManager::createPostRequest(const QUrl& url, const QByteArray& body) const
{
    auto headers = AuthManager::defaultHeaders();
    if (AuthManager::instance()->hasToken())
        headers.append(
            {QByteArrayLiteral("Authorization"), "Token " + AuthManager::instance()->token().toUtf8()});
    return d->network.sendPostRequest(url, body, headers);
}

QUrl BaseSyncManager::endpointUrl(const QString& path) const
{
    return QUrl(AuthManager::apiUrl() + QLatin1Char('/') + apiEndpoint() + path);
}

void BaseSyncManager::handleReply(QNetworkReply* reply, const QString& logName,
                                  std::function<void(const QByteArray&)> onSuccess)
{
    connect(reply, &QNetworkReply::finished, this, [this, reply, logName, onSuccess]() {
        reply->deleteLater();
        if (reply->error() != QNetworkReply::NoError) {
            QLOG_ERROR() << "Server Error (" << logName << "): " << reply->errorString();
            setSyncActive(false);
            return;
        }
        onSuccess(reply->readAll());
    });
}

QTimer* BaseSyncManager::timer() const
{
    return d->timer;
}

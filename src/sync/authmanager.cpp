#include "authmanager.h"

#include "core/logmanager.h"
#include "core/settings.h"
#include "platform/networkhandler.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkReply>
#include <QSysInfo>
#include <QUrl>

struct AuthManager::Private
{
    NetworkHandler network;
    bool requestActive = false;
};

AuthManager* AuthManager::instance()
{
    static AuthManager* manager = new AuthManager();
    return manager;
}

AuthManager::AuthManager()
    : d(std::make_unique<Private>())
{}

AuthManager::~AuthManager() = default;

QString AuthManager::apiUrl()
{
    return Settings::instance()->serverUrl();
}

QList<QPair<QByteArray, QByteArray>> AuthManager::defaultHeaders()
{
    const QString userAgent = QStringLiteral("Norvel/%1 (Kelmora; %2) NetworkHandler/1.0")
                                  .arg(QStringLiteral(NORVEL_VERSION), QSysInfo::prettyProductName());
    return {{QByteArrayLiteral("Content-Type"), QByteArrayLiteral("application/json")},
            {QByteArrayLiteral("User-Agent"), userAgent.toUtf8()}};
}

bool AuthManager::hasToken() const
{
    return !token().isEmpty();
}

QString AuthManager::token() const
{
    return Settings::instance()->authToken();
}

void AuthManager::requestToken()
{
    Settings* settings = Settings::instance();
    if (d->requestActive || settings->clientLogin().isEmpty() || settings->clientPassword().isEmpty() ||
        hasToken())
        return;
    d->requestActive = true;
    const QJsonObject body{{QStringLiteral("login"), settings->clientLogin()},
                           {QStringLiteral("password"), settings->clientPassword()}};
    QNetworkReply* reply =
        d->network.sendPostRequest(QUrl(apiUrl() + QStringLiteral("/auth/v1/login/")),
                                   QJsonDocument(body).toJson(QJsonDocument::Compact), defaultHeaders());
    connect(reply, &QNetworkReply::finished, this, &AuthManager::handleTokenReply);
}

void AuthManager::handleTokenReply()
{
    auto* reply = qobject_cast<QNetworkReply*>(sender());
    d->requestActive = false;
    reply->deleteLater();
    if (reply->error() != QNetworkReply::NoError) {
        QLOG_ERROR() << "Token request failed: " << reply->errorString();
        emit serverError(reply->errorString());
        return;
    }
    const QString key =
        QJsonDocument::fromJson(reply->readAll()).object().value(QStringLiteral("key")).toString();
    // Without a key every later request would fail the same way: end the runs now instead.
    if (key.isEmpty()) {
        emit serverError(QStringLiteral("The server's answer holds no token"));
        return;
    }
    Settings::instance()->setAuthToken(key);
    emit authTokenReceived();
}

void AuthManager::logout()
{
    Settings::instance()->setAuthToken(QString());
    Settings::instance()->setPurchaseRequestSent(false);
}

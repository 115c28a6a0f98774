#include "apihandler.h"

#include "core/settings.h"
#include "platform/apioperation.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSysInfo>
#include <QUrl>

namespace {

constexpr int transferTimeoutMilliseconds = 60000;

QString md5(const QString& text)
{
    return QString::fromLatin1(QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Md5).toHex());
}

// Dates leave as ISO 8601 text in UTC, an undated object's "" as it is.
QJsonObject toJsonObject(const QVariantMap& object)
{
    QJsonObject json;
    for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
        if (it.value().type() == QVariant::DateTime) {
            const QDateTime dateTime = it.value().toDateTime();
            json.insert(it.key(), dateTime.isValid() ? dateTime.toUTC().toString(Qt::ISODate) : QString());
        } else {
            json.insert(it.key(), QJsonValue::fromVariant(it.value()));
        }
    }
    return json;
}

} // namespace

struct ApiHandler::Private
{
    QList<QPair<QString, QString>> extraKeys;
    QString login;
    QString password;
    QNetworkAccessManager* network = nullptr;
};

ApiHandler::ApiHandler(const QList<QPair<QString, QString>>& extraKeys, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->extraKeys = extraKeys;
    d->network = new QNetworkAccessManager(this);
    connect(d->network, &QNetworkAccessManager::proxyAuthenticationRequired, this,
            &ApiHandler::proxyAuthenticationRequired);
}

ApiHandler::~ApiHandler() = default;

void ApiHandler::setClientLogin(const QString& login)
{
    d->login = login;
}

void ApiHandler::setClientPassword(const QString& password)
{
    d->password = password;
}

ApiOperation* ApiHandler::getChanges(int revision, QObject* parent)
{
    return post(QStringLiteral("/sync/v1/changes"), {{QStringLiteral("revision"), revision}}, true, parent);
}

ApiOperation* ApiHandler::createContext(const QVariantMap& object, int revision, QObject* parent)
{
    return sendObject(QStringLiteral("context"), QStringLiteral("create"), object, revision, parent);
}

ApiOperation* ApiHandler::updateContext(const QVariantMap& object, int revision, QObject* parent)
{
    return sendObject(QStringLiteral("context"), QStringLiteral("update"), object, revision, parent);
}

ApiOperation* ApiHandler::createProject(const QVariantMap& object, int revision, QObject* parent)
{
    return sendObject(QStringLiteral("project"), QStringLiteral("create"), object, revision, parent);
}

ApiOperation* ApiHandler::updateProject(const QVariantMap& object, int revision, QObject* parent)
{
    return sendObject(QStringLiteral("project"), QStringLiteral("update"), object, revision, parent);
}

ApiOperation* ApiHandler::createTask(const QVariantMap& object, int revision, QObject* parent)
{
    return sendObject(QStringLiteral("task"), QStringLiteral("create"), object, revision, parent);
}

ApiOperation* ApiHandler::updateTask(const QVariantMap& object, int revision, QObject* parent)
{
    return sendObject(QStringLiteral("task"), QStringLiteral("update"), object, revision, parent);
}

ApiOperation* ApiHandler::registerUser(const QString& login, const QString& password, QObject* parent)
{
    // The new account's demo objects are named in the language of the program.
    return post(QStringLiteral("/account/v1/register"),
                {{QStringLiteral("login"), login},
                 {QStringLiteral("password"), password},
                 {QStringLiteral("language"), Settings::instance()->applicationLanguage()}},
                false, parent);
}

ApiOperation* ApiHandler::checkLogin(const QString& login, const QString& password, QObject* parent)
{
    return post(QStringLiteral("/account/v1/check"),
                {{QStringLiteral("login"), login}, {QStringLiteral("password"), password}}, false, parent);
}

ApiOperation* ApiHandler::resetPassword(const QString& login, QObject* parent)
{
    return post(QStringLiteral("/account/v1/reset"), {{QStringLiteral("login"), login}}, false, parent);
}

ApiOperation* ApiHandler::changePassword(const QString& login, const QString& oldPassword,
                                         const QString& newPassword, QObject* parent)
{
    return post(QStringLiteral("/account/v1/password"),
                {{QStringLiteral("login"), login},
                 {QStringLiteral("old_password"), md5(oldPassword)},
                 {QStringLiteral("new_password"), md5(newPassword)}},
                false, parent);
}

ApiOperation* ApiHandler::sendObject(const QString& kind, const QString& action, const QVariantMap& object,
                                     int revision, QObject* parent)
{
    return post(QStringLiteral("/sync/v1/%1/%2").arg(kind, action),
                {{QStringLiteral("revision"), revision}, {QStringLiteral("object"), toJsonObject(object)}},
                true, parent);
}

ApiOperation* ApiHandler::post(const QString& path, QVariantMap body, bool withCredentials, QObject* parent)
{
    for (const auto& extraKey : qAsConst(d->extraKeys))
        body.insert(extraKey.first, extraKey.second);
    QNetworkRequest request(QUrl(Settings::instance()->serverUrl() + path));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    request.setHeader(QNetworkRequest::UserAgentHeader,
                      QStringLiteral("Norvel/%1 (Kelmora; %2) ApiHandler/1.0")
                          .arg(QStringLiteral(NORVEL_VERSION), QSysInfo::prettyProductName()));
    request.setTransferTimeout(transferTimeoutMilliseconds);
    if (withCredentials) {
        const QByteArray credentials = (d->login + QLatin1Char(':') + d->password).toUtf8().toBase64();
        request.setRawHeader("Authorization", "Basic " + credentials);
    }
    const QByteArray json = QJsonDocument(QJsonObject::fromVariantMap(body)).toJson(QJsonDocument::Compact);
    return new ApiOperation(d->network->post(request, json), parent);
}

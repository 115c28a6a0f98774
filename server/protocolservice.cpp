#include "protocolservice.h"

#include "accountstore.h"
#include "httpexchange.h"
#include "objectstore.h"
#include "objectvalidator.h"

#include <cmath>

namespace {

Outcome badRequest(const QString& text)
{
    return Outcome::failure(ResultCode::BadRequest, text);
}

bool readRevision(const QJsonObject& body, qint64* revision)
{
    const QJsonValue value = body.value(QStringLiteral("revision"));
    const double number = value.toDouble(-1);
    if (!value.isDouble() || number < 0 || number > 9.0e15 || std::floor(number) != number)
        return false;
    *revision = static_cast<qint64>(number);
    return true;
}

// Login and secret from the body's "login" and the named secret field, checked for shape.
bool readLogin(const QJsonObject& body, const char* secretField, QString* email, QString* secret)
{
    *email = AccountStore::normalizedEmail(body.value(QStringLiteral("login")).toString());
    *secret = body.value(QLatin1String(secretField)).toString();
    return AccountStore::isValidEmail(*email) && AccountStore::isValidSecret(*secret);
}

QString escapeHtml(const QString& text)
{
    return text.toHtmlEscaped();
}

} // namespace

ProtocolService::ProtocolService(AccountStore* accounts, const QString& minimumClientVersion,
                                 const QString& publicUrl)
    : m_accounts(accounts)
    , m_minimumClientVersion(QVersionNumber::fromString(minimumClientVersion))
    , m_publicUrl(publicUrl)
{}

void ProtocolService::registerRoutes(httplib::Server& server)
{
    using Handler = Outcome (ProtocolService::*)(const httplib::Request&, const QJsonObject&) const;
    const auto route = [this, &server](const char* path, Handler handler) {
        server.Post(path, [this, handler](const httplib::Request& request, httplib::Response& response) {
            QJsonObject body;
            if (readBody(request, response, &body))
                HttpExchange::replyOutcome(response, (this->*handler)(request, body));
        });
    };
    route("/api/account/v1/register", &ProtocolService::registerUser);
    route("/api/account/v1/check", &ProtocolService::checkLogin);
    route("/api/account/v1/password", &ProtocolService::changePassword);
    route("/api/sync/v1/changes", &ProtocolService::changes);
    route(R"(/api/sync/v1/(context|project|task)/(create|update))", &ProtocolService::writeObject);
    server.Post("/api/account/v1/reset",
                [this](const httplib::Request& request, httplib::Response& response) {
                    QJsonObject body;
                    if (readBody(request, response, &body))
                        HttpExchange::replyOutcome(response, resetPassword(body));
                });
    server.Get("/api/account/v1/reset/confirm",
               [this](const httplib::Request& request, httplib::Response& response) {
                   confirmReset(request, response);
               });
}

bool ProtocolService::readBody(const httplib::Request& request, httplib::Response& response,
                               QJsonObject* body) const
{
    if (!HttpExchange::readObject(request, body)) {
        HttpExchange::replyOutcome(response, badRequest(QStringLiteral("The body is not a JSON object")));
        return false;
    }
    const QJsonValue version = body->value(QStringLiteral("VERSION"));
    if (version.isUndefined())
        return true;
    const QVersionNumber clientVersion = QVersionNumber::fromString(version.toString());
    if (clientVersion.isNull() || clientVersion < m_minimumClientVersion) {
        HttpExchange::replyOutcome(
            response,
            Outcome::failure(ResultCode::ClientTooOld,
                             QStringLiteral("Client version %1 is older than the oldest supported, %2")
                                 .arg(version.toString(), m_minimumClientVersion.toString())));
        return false;
    }
    return true;
}

Outcome ProtocolService::authenticate(const httplib::Request& request, qint64* accountId) const
{
    const QByteArray decoded = QByteArray::fromBase64(HttpExchange::credentials(request, "Basic"));
    const int colon = decoded.indexOf(':');
    const QString email = AccountStore::normalizedEmail(QString::fromUtf8(decoded.left(colon)));
    const QString secret = QString::fromUtf8(decoded.mid(colon + 1));
    if (colon < 0 || !AccountStore::isValidEmail(email) || !AccountStore::isValidSecret(secret))
        return Outcome::failure(ResultCode::NotAuthenticated,
                                QStringLiteral("Basic credentials of login and password are required"));
    const AccountStore::Login login =
        m_accounts->authenticate(email, secret, HttpExchange::remoteAddress(request));
    *accountId = login.accountId;
    return login.code == ResultCode::Success ? Outcome::success("null")
                                             : Outcome::failure(login.code, login.text);
}

Outcome ProtocolService::registerUser(const httplib::Request&, const QJsonObject& body) const
{
    QString email;
    QString secret;
    if (!readLogin(body, "password", &email, &secret))
        return badRequest(QStringLiteral("A valid login and password are required"));
    const bool russian = body.value(QStringLiteral("language")).toString().startsWith(QLatin1String("ru"));
    return m_accounts->registerAccount(email, secret, russian);
}

Outcome ProtocolService::checkLogin(const httplib::Request& request, const QJsonObject& body) const
{
    QString email;
    QString secret;
    if (!readLogin(body, "password", &email, &secret))
        return badRequest(QStringLiteral("A valid login and password are required"));
    const AccountStore::Login login =
        m_accounts->authenticate(email, secret, HttpExchange::remoteAddress(request));
    return login.code == ResultCode::Success ? Outcome::success("null")
                                             : Outcome::failure(login.code, login.text);
}

Outcome ProtocolService::resetPassword(const QJsonObject& body) const
{
    const QString email = AccountStore::normalizedEmail(body.value(QStringLiteral("login")).toString());
    if (!AccountStore::isValidEmail(email))
        return badRequest(QStringLiteral("A valid login is required"));
    return m_accounts->requestPasswordReset(email, m_publicUrl + QStringLiteral("/account/v1/reset/confirm"));
}

Outcome ProtocolService::changePassword(const httplib::Request& request, const QJsonObject& body) const
{
    QString email;
    QString oldSecret;
    const QString newSecret = body.value(QStringLiteral("new_password")).toString();
    if (!readLogin(body, "old_password", &email, &oldSecret) || !AccountStore::isValidSecret(newSecret))
        return badRequest(QStringLiteral("A valid login, old and new password are required"));
    return m_accounts->changePassword(email, oldSecret, newSecret, HttpExchange::remoteAddress(request));
}

void ProtocolService::confirmReset(const httplib::Request& request, httplib::Response& response) const
{
    const QByteArray token = QByteArray::fromStdString(request.get_param_value("token"));
    const QString password = token.size() == 64 ? m_accounts->confirmPasswordReset(token) : QString();
    QString page;
    if (password.isEmpty()) {
        response.status = 404;
        page = QStringLiteral("<p>This link is unknown, was used already or has expired. Ask for a new one "
                              "in Norvel.</p>");
    } else {
        page = QStringLiteral(
                   "<p>Your new Norvel password is <b><code>%1</code></b></p><p>Log in with it in Norvel "
                   "and change it in the account settings.</p>")
                   .arg(escapeHtml(password));
    }
    const QByteArray html =
        QStringLiteral(
            "<!DOCTYPE html><html><head><meta charset=\"utf-8\"><title>Norvel</title></head><body>%1"
            "</body></html>")
            .arg(page)
            .toUtf8();
    response.set_header("Cache-Control", "no-store");
    response.set_content(html.constData(), static_cast<size_t>(html.size()), "text/html; charset=utf-8");
}

Outcome ProtocolService::changes(const httplib::Request& request, const QJsonObject& body) const
{
    qint64 revision = 0;
    if (!readRevision(body, &revision))
        return badRequest(QStringLiteral("A revision of 0 or more is required"));
    qint64 accountId = 0;
    const Outcome authentication = authenticate(request, &accountId);
    if (!authentication.succeeded())
        return authentication;
    return ObjectStore::changes(accountId, revision);
}

Outcome ProtocolService::writeObject(const httplib::Request& request, const QJsonObject& body) const
{
    const QString kind = QString::fromStdString(request.matches[1]);
    const bool create = request.matches[2] == "create";
    qint64 revision = 0;
    if (!readRevision(body, &revision))
        return badRequest(QStringLiteral("A revision of 0 or more is required"));
    QJsonObject object;
    QString error;
    if (!ObjectValidator::normalize(kind, body.value(QStringLiteral("object")).toObject(), &object, &error))
        return badRequest(error);
    qint64 accountId = 0;
    const Outcome authentication = authenticate(request, &accountId);
    if (!authentication.succeeded())
        return authentication;
    return ObjectStore::write(
        accountId, kind, create ? ObjectStore::Write::Create : ObjectStore::Write::Update, revision, object);
}

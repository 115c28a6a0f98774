#include "recordservice.h"

#include "accountstore.h"
#include "httpexchange.h"
#include "recordstore.h"

#include <QJsonDocument>

RecordService::RecordService(AccountStore* accounts)
    : m_accounts(accounts)
{}

void RecordService::registerRoutes(httplib::Server& server)
{
    server.Post("/api/auth/v1/login/", [this](const httplib::Request& request, httplib::Response& response) {
        login(request, response);
    });
    const char* stores = R"(/api/(favorites|sorting|reminders)/v1/)";
    server.Get(stores, [this](const httplib::Request& request, httplib::Response& response) {
        get(request, response);
    });
    server.Post(stores, [this](const httplib::Request& request, httplib::Response& response) {
        change(request, response, false);
    });
    server.Post(R"(/api/(favorites|reminders)/v1/delete/)",
                [this](const httplib::Request& request, httplib::Response& response) {
                    change(request, response, true);
                });
    server.Post(R"(/api/(sorting)/v1/list/delete/)",
                [this](const httplib::Request& request, httplib::Response& response) {
                    change(request, response, true);
                });
}

void RecordService::login(const httplib::Request& request, httplib::Response& response) const
{
    QJsonObject body;
    if (!HttpExchange::readObject(request, &body)) {
        HttpExchange::replyDetail(response, 400, QStringLiteral("The body is not a JSON object."));
        return;
    }
    const QString login = AccountStore::normalizedEmail(body.value(QStringLiteral("login")).toString());
    const QString secret = body.value(QStringLiteral("password")).toString();
    if (!AccountStore::isValidEmail(login) || !AccountStore::isValidSecret(secret)) {
        HttpExchange::replyDetail(response, 400, QStringLiteral("A valid login and password are required."));
        return;
    }
    const AccountStore::Login result =
        m_accounts->authenticate(login, secret, HttpExchange::remoteAddress(request));
    if (result.code == ResultCode::TooManyAttempts) {
        HttpExchange::replyDetail(response, 429, result.text);
        return;
    }
    if (result.code != ResultCode::Success) {
        HttpExchange::replyDetail(response, 400,
                                  QStringLiteral("Unable to log in with the provided credentials."));
        return;
    }
    const QByteArray token = m_accounts->issueToken(result.accountId);
    if (token.isEmpty()) {
        HttpExchange::replyDetail(response, 500, QStringLiteral("Internal server error."));
        return;
    }
    HttpExchange::replyJson(response, 200, "{\"key\":\"" + token + "\"}");
}

qint64 RecordService::account(const httplib::Request& request, httplib::Response& response) const
{
    const qint64 accountId = m_accounts->accountForToken(HttpExchange::credentials(request, "Token"));
    if (accountId == 0)
        HttpExchange::replyDetail(response, 401, QStringLiteral("Invalid token."));
    return accountId;
}

void RecordService::get(const httplib::Request& request, httplib::Response& response) const
{
    const qint64 accountId = account(request, response);
    if (accountId != 0)
        replyState(response, accountId, QString::fromStdString(request.matches[1]));
}

void RecordService::change(const httplib::Request& request, httplib::Response& response, bool deletion) const
{
    const qint64 accountId = account(request, response);
    if (accountId == 0)
        return;
    const QString store = QString::fromStdString(request.matches[1]);
    QJsonArray records;
    QString error;
    if (!HttpExchange::readArray(request, &records)) {
        HttpExchange::replyDetail(response, 400, QStringLiteral("The body is not a JSON array."));
        return;
    }
    if (!RecordStore::validate(store, records, deletion, &error)) {
        HttpExchange::replyDetail(response, 400, error);
        return;
    }
    const bool stored = deletion ? RecordStore::remove(accountId, store, records)
                                 : RecordStore::send(accountId, store, records);
    if (!stored) {
        HttpExchange::replyDetail(response, 500, QStringLiteral("Internal server error."));
        return;
    }
    replyState(response, accountId, store);
}

void RecordService::replyState(httplib::Response& response, qint64 accountId, const QString& store) const
{
    QJsonArray records;
    if (!RecordStore::records(accountId, store, &records)) {
        HttpExchange::replyDetail(response, 500, QStringLiteral("Internal server error."));
        return;
    }
    HttpExchange::replyJson(response, 200, QJsonDocument(records).toJson(QJsonDocument::Compact));
}

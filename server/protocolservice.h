#pragma once

#include "resultcode.h"

#include <QJsonObject>
#include <QString>
#include <QVersionNumber>

#include <httplib.h>

class AccountStore;

// The routes of the revision protocol and of the account calls under /api/sync/v1 and /api/account/v1.
// Every body is a JSON object that carries the client's "PLATFORM" and "VERSION" beside its fields;
// every answer is the envelope of HttpExchange::replyOutcome.
class ProtocolService
{
public:
    ProtocolService(AccountStore* accounts, const QString& minimumClientVersion, const QString& publicUrl);

    void registerRoutes(httplib::Server& server);

private:
    // Parses the body and checks the client's version; a failure has already been answered.
    bool readBody(const httplib::Request& request, httplib::Response& response, QJsonObject* body) const;
    Outcome authenticate(const httplib::Request& request, qint64* accountId) const;

    Outcome registerUser(const httplib::Request& request, const QJsonObject& body) const;
    Outcome checkLogin(const httplib::Request& request, const QJsonObject& body) const;
    Outcome resetPassword(const QJsonObject& body) const;
    Outcome changePassword(const httplib::Request& request, const QJsonObject& body) const;
    void confirmReset(const httplib::Request& request, httplib::Response& response) const;
    Outcome changes(const httplib::Request& request, const QJsonObject& body) const;
    Outcome writeObject(const httplib::Request& request, const QJsonObject& body) const;

    AccountStore* m_accounts;
    QVersionNumber m_minimumClientVersion;
    QString m_publicUrl;
};

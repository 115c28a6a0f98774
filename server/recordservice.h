#pragma once

#include <QString>

#include <httplib.h>

class AccountStore;

// The REST side: "/api/auth/v1/login/" hands out tokens, and favorites, sorting and reminders are read
// and changed under "/api/<store>/v1/" with "Authorization: Token <key>". A send or a delete answers
// the store's full state, as a GET would.
class RecordService
{
public:
    explicit RecordService(AccountStore* accounts);

    void registerRoutes(httplib::Server& server);

private:
    void login(const httplib::Request& request, httplib::Response& response) const;
    // 0 when the token is missing or unknown; the answer is then written.
    qint64 account(const httplib::Request& request, httplib::Response& response) const;
    void get(const httplib::Request& request, httplib::Response& response) const;
    void change(const httplib::Request& request, httplib::Response& response, bool deletion) const;
    void replyState(httplib::Response& response, qint64 accountId, const QString& store) const;

    AccountStore* m_accounts;
};

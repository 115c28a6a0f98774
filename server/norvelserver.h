#pragma once

#include "serveroptions.h"

#include <memory>

namespace httplib {
class Server;
}
class AccountStore;
class Mailer;
class ProtocolService;
class RecordService;

// The whole server: database, stores and routes behind one HTTP or HTTPS listener, with the limits
// every request is held to.
class NorvelServer
{
public:
    static constexpr size_t largestBody = 8 * 1024 * 1024;
    static constexpr int readTimeoutSeconds = 30;
    static constexpr int writeTimeoutSeconds = 60;

    explicit NorvelServer(ServerOptions options);
    ~NorvelServer();

    // Opens the database, creates the schema and binds the port; false with a message otherwise.
    bool start(QString* error);
    int port() const;
    QString baseUrl() const;
    // Serves until stop() is called from another thread.
    bool run();
    void stop();

private:
    void configureLimits();

    ServerOptions m_options;
    int m_port = 0;
    std::unique_ptr<httplib::Server> m_http;
    std::unique_ptr<Mailer> m_mailer;
    std::unique_ptr<AccountStore> m_accounts;
    std::unique_ptr<ProtocolService> m_protocol;
    std::unique_ptr<RecordService> m_records;
};

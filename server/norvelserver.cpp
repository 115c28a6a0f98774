#include "norvelserver.h"

#include "quickackserver.h"

#include "accountstore.h"
#include "httpexchange.h"
#include "mailer.h"
#include "protocolservice.h"
#include "recordservice.h"
#include "secrets.h"
#include "serverdatabase.h"
#include "serverlog.h"

#include <QDir>
#include <QHostAddress>

#include <httplib.h>

NorvelServer::NorvelServer(ServerOptions options)
    : m_options(std::move(options))
{}

NorvelServer::~NorvelServer() = default;

bool NorvelServer::start(QString* error)
{
    if (!Secrets::initialize()) {
        *error = QStringLiteral("libsodium cannot start");
        return false;
    }
    if (!QDir().mkpath(m_options.dataDirectory)) {
        *error = QStringLiteral("Cannot create the data directory %1").arg(m_options.dataDirectory);
        return false;
    }
    if (!ServerDatabase::configure(m_options.database, m_options.sqliteFile(), error) ||
        !ServerDatabase::createSchema(error))
        return false;
    if (m_options.usesTls()) {
        m_http = std::make_unique<httplib::SSLServer>(m_options.tlsCertificate.toLocal8Bit().constData(),
                                                      m_options.tlsKey.toLocal8Bit().constData());
    } else {
        m_http = std::make_unique<QuickAckServer>();
    }
    if (!m_http->is_valid()) {
        *error = QStringLiteral("The TLS certificate or key cannot be used");
        return false;
    }
    configureLimits();
    const std::string host = m_options.listenAddress.toStdString();
    m_port = m_options.port == 0 ? m_http->bind_to_any_port(host)
                                 : (m_http->bind_to_port(host, m_options.port) ? m_options.port : -1);
    if (m_port <= 0) {
        *error =
            QStringLiteral("Cannot listen on %1 port %2").arg(m_options.listenAddress).arg(m_options.port);
        return false;
    }
    m_mailer = std::make_unique<Mailer>(
        Mailer::Settings{m_options.smtpUrl, m_options.smtpUser, m_options.smtpPassword, m_options.mailFrom,
                         QDir(m_options.dataDirectory).filePath(QStringLiteral("outbox"))});
    m_accounts = std::make_unique<AccountStore>(m_mailer.get());
    const QString publicUrl = m_options.publicUrl.isEmpty() ? baseUrl() : m_options.publicUrl;
    m_protocol =
        std::make_unique<ProtocolService>(m_accounts.get(), m_options.minimumClientVersion, publicUrl);
    m_records = std::make_unique<RecordService>(m_accounts.get());
    m_protocol->registerRoutes(*m_http);
    m_records->registerRoutes(*m_http);
    return true;
}

void NorvelServer::configureLimits()
{
    const size_t threads = static_cast<size_t>(m_options.threads);
    m_http->new_task_queue = [threads] { return new httplib::ThreadPool(threads); };
    // The library's default adds SO_REUSEPORT, which would let a second server share the port unnoticed.
    m_http->set_socket_options([](socket_t socket) {
        const int yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });
    // Answers leave in several writes; without this each waits for the client's delayed ACK.
    m_http->set_tcp_nodelay(true);
    m_http->set_payload_max_length(largestBody);
    m_http->set_read_timeout(readTimeoutSeconds);
    m_http->set_write_timeout(writeTimeoutSeconds);
    m_http->set_keep_alive_timeout(30);
    m_http->set_keep_alive_max_count(1000);
    // Routes answer with bodies of their own; only the library's bare errors get one here.
    m_http->set_error_handler(
        httplib::Server::HandlerWithResponse([](const httplib::Request&, httplib::Response& response) {
            if (!response.body.empty())
                return httplib::Server::HandlerResponse::Unhandled;
            HttpExchange::replyDetail(response, response.status,
                                      QStringLiteral("HTTP status %1").arg(response.status));
            return httplib::Server::HandlerResponse::Handled;
        }));
    m_http->set_exception_handler(
        [](const httplib::Request&, httplib::Response& response, std::exception_ptr) {
            qCCritical(serverLog) << "A request ended in an exception";
            HttpExchange::replyDetail(response, 500, QStringLiteral("Internal server error."));
        });
    m_http->set_logger([](const httplib::Request& request, const httplib::Response& response) {
        qCDebug(serverLog).noquote() << QString::fromStdString(request.remote_addr)
                                     << QString::fromStdString(request.method)
                                     << QString::fromStdString(request.path) << response.status;
    });
}

int NorvelServer::port() const
{
    return m_port;
}

QString NorvelServer::baseUrl() const
{
    QHostAddress address(m_options.listenAddress);
    QString host = address.toString();
    if (address.protocol() == QAbstractSocket::IPv6Protocol)
        host = QLatin1Char('[') + host + QLatin1Char(']');
    return QStringLiteral("%1://%2:%3/api").arg(m_options.usesTls() ? "https" : "http", host).arg(m_port);
}

bool NorvelServer::run()
{
    return m_http->listen_after_bind();
}

void NorvelServer::stop()
{
    if (m_http)
        m_http->stop();
}

#include "testlib/postgresqlcluster.h"
#include "testlib/serverprocess.h"

#include <benchmark/benchmark.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QTcpSocket>
#include <QUrl>

#include <memory>

namespace {

constexpr int contextCount = 1000;
constexpr int projectCount = 1000;
constexpr int taskCount = 8000;

const QByteArray secret = "5f4dcc3b5aa765d61d8327deb882cf99";
const QByteArray login = "bench@example.org";

QString objectId(const char* kind, int number)
{
    return QStringLiteral("%1-%2").arg(QLatin1String(kind)).arg(number);
}

QJsonObject makeObject(const char* kind, int number, qint64 timestamp)
{
    QJsonObject object{{"ID", objectId(kind, number)},
                       {"NAME", QStringLiteral("%1 %2").arg(QLatin1String(kind)).arg(number)},
                       {"TIMESTAMP", timestamp}};
    if (qstrcmp(kind, "task") == 0) {
        object.insert("PARENT", objectId("project", number % projectCount));
        object.insert("CONTEXT", objectId("context", number % contextCount));
        object.insert("DUE", "2026-03-05T18:00:00Z");
    }
    return object;
}

// A minimal HTTP/1.1 client on one keep-alive connection that sends each request in one write with
// Nagle off. QNetworkAccessManager writes the headers and the body of a POST separately, and on a
// kept-alive connection the body then waits for the server's delayed ACK (about 40 ms on Linux):
// that would measure the client's stall, not the server.
class RawHttpClient
{
public:
    bool connectTo(const QUrl& url)
    {
        m_url = url;
        m_socket.connectToHost(url.host(), static_cast<quint16>(url.port()));
        m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        return m_socket.waitForConnected(10000);
    }

    // The answer's body, empty on failure.
    QByteArray post(const QString& path, const QJsonObject& body)
    {
        const QByteArray json = QJsonDocument(body).toJson(QJsonDocument::Compact);
        const QByteArray request =
            "POST " + m_url.path().toUtf8() + path.toUtf8() + " HTTP/1.1\r\nHost: " + m_url.host().toUtf8() +
            "\r\nContent-Type: application/json\r\nAuthorization: Basic " +
            (login + ':' + secret).toBase64() + "\r\nContent-Length: " + QByteArray::number(json.size()) +
            "\r\n\r\n" + json;
        if (m_socket.state() != QAbstractSocket::ConnectedState && !connectTo(m_url))
            return QByteArray();
        m_socket.write(request);
        return readAnswer();
    }

private:
    QByteArray readAnswer()
    {
        QByteArray buffer;
        int headerEnd = -1;
        qint64 length = -1;
        while (length < 0 || buffer.size() < headerEnd + 4 + length) {
            if (!m_socket.waitForReadyRead(30000))
                return QByteArray();
            buffer += m_socket.readAll();
            if (headerEnd < 0 && (headerEnd = buffer.indexOf("\r\n\r\n")) >= 0) {
                const int field = buffer.toLower().indexOf("content-length:");
                length = field < 0 ? 0
                                   : buffer.mid(field + 15, buffer.indexOf("\r\n", field) - field - 15)
                                         .trimmed()
                                         .toLongLong();
            }
        }
        // The server ends a kept-alive connection after so many requests.
        if (buffer.left(headerEnd).toLower().contains("connection: close")) {
            m_socket.abort();
        }
        return buffer.mid(headerEnd + 4, static_cast<int>(length));
    }

    QUrl m_url;
    QTcpSocket m_socket;
};

// One server with one account of 10,000 objects, made on first use and kept for the whole run.
class BenchServer
{
public:
    static BenchServer* get(bool postgres)
    {
        static QMap<bool, std::shared_ptr<BenchServer>> servers;
        if (!servers.contains(postgres)) {
            auto server = std::make_shared<BenchServer>();
            servers.insert(postgres, server->start(postgres) ? server : nullptr);
        }
        return servers.value(postgres).get();
    }

    bool start(bool postgres)
    {
        QString address;
        if (postgres) {
            QString error;
            if (PostgresqlCluster::binDirectory().isEmpty() || !m_cluster.start(&error))
                return false;
            address = m_cluster.address();
        }
        if (!m_server.start(address) || !m_client.connectTo(QUrl(m_server.baseUrl())))
            return false;
        post("/account/v1/register",
             QJsonObject{{"login", QString::fromLatin1(login)}, {"password", QString::fromLatin1(secret)}});
        return fill("context", contextCount) && fill("project", projectCount) && fill("task", taskCount);
    }

    QByteArray post(const QString& path, const QJsonObject& body) { return m_client.post(path, body); }

private:
    bool fill(const char* kind, int count)
    {
        for (int number = 0; number < count; ++number) {
            const QJsonObject body{{"revision", 0}, {"object", makeObject(kind, number, 1000)}};
            if (!post(QStringLiteral("/sync/v1/%1/create").arg(QLatin1String(kind)), body)
                     .contains("\"code\":-1"))
                return false;
        }
        return true;
    }

    PostgresqlCluster m_cluster;
    ServerProcess m_server;
    RawHttpClient m_client;
};

void serverChangesOfTenThousandObjects(benchmark::State& state)
{
    BenchServer* server = BenchServer::get(state.range(0) != 0);
    if (!server) {
        state.SkipWithError("the server could not be set up");
        return;
    }
    for (auto _ : state) {
        const QByteArray answer = server->post("/sync/v1/changes", QJsonObject{{"revision", 0}});
        if (answer.count("\"TYPE\"") < contextCount + projectCount + taskCount)
            state.SkipWithError("the answer lacks objects");
    }
}

void serverThousandSequentialUpdates(benchmark::State& state)
{
    BenchServer* server = BenchServer::get(state.range(0) != 0);
    if (!server) {
        state.SkipWithError("the server could not be set up");
        return;
    }
    static qint64 timestamp = 2000;
    for (auto _ : state) {
        ++timestamp;
        for (int number = 0; number < 1000; ++number) {
            const QJsonObject body{{"revision", 0}, {"object", makeObject("task", number, timestamp)}};
            if (!server->post("/sync/v1/task/update", body).contains("\"code\":-1"))
                state.SkipWithError("an update was refused");
        }
    }
    state.SetItemsProcessed(state.iterations() * 1000);
}

} // namespace

// Argument 0: SQLite, 1: PostgreSQL.
BENCHMARK(serverChangesOfTenThousandObjects)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(serverThousandSequentialUpdates)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();

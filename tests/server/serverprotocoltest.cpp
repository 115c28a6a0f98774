#include "testlib/postgresqlcluster.h"
#include "testlib/serverprocess.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QUuid>
#include <QtTest>

#include <memory>

namespace {

const QByteArray secret = "5f4dcc3b5aa765d61d8327deb882cf99";

struct Answer
{
    int status = 0;
    QByteArray body;

    QJsonObject object() const { return QJsonDocument::fromJson(body).object(); }
    QJsonArray array() const { return QJsonDocument::fromJson(body).array(); }
    int code() const { return object().value(QStringLiteral("code")).toInt(); }
    QJsonArray result() const { return object().value(QStringLiteral("result")).toArray(); }
};

QByteArray json(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray json(const QJsonArray& array)
{
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

QString newId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

QJsonObject context(const QString& id, const QString& parent = QString(), int state = 0)
{
    return {{QStringLiteral("ID"), id},
            {QStringLiteral("NAME"), id},
            {QStringLiteral("PARENT"), parent},
            {QStringLiteral("STATE"), state},
            {QStringLiteral("TIMESTAMP"), 1000}};
}

QJsonObject record(const QString& store, const QString& id, const QString& time)
{
    if (store == QLatin1String("sorting"))
        return {{QStringLiteral("list_id"), id},
                {QStringLiteral("list_type"), QStringLiteral("project")},
                {QStringLiteral("sorting_type"), QStringLiteral("alphabetical")},
                {QStringLiteral("group_by_date"), false},
                {QStringLiteral("last_changed"), time}};
    if (store == QLatin1String("reminders"))
        return {{QStringLiteral("object_id"), id},
                {QStringLiteral("applied_date"), QStringLiteral("end")},
                {QStringLiteral("reminder_type"), QStringLiteral("predefined")},
                {QStringLiteral("predefined_type"), QStringLiteral("15min")},
                {QStringLiteral("last_changed"), time}};
    return {{QStringLiteral("object_id"), id},
            {QStringLiteral("object_type"), QStringLiteral("task")},
            {QStringLiteral("last_changed"), time}};
}

} // namespace

// The server's protocol and security rules over raw HTTP, once on SQLite and once on PostgreSQL.
class ServerProtocolTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data();
    void init();
    void accountsNeverSeeEachOther();
    void malformedRequestsAreRefused_data();
    void malformedRequestsAreRefused();
    void badReferencesAnswer103WithTheirForms();
    void changesComeParentsFirstWhateverTheRevision();
    void lastChangedDecidesWhatAChangeOverwrites_data();
    void lastChangedDecidesWhatAChangeOverwrites();
    void failedLoginsAreSlowedDown();
    void passwordResetMailsAWorkingLink();

private:
    Answer request(const QByteArray& method, const QString& path, const QByteArray& body,
                   const QByteArray& authorization = QByteArray());
    QString registerAccount();
    QByteArray basic(const QString& login) const;
    QByteArray token(const QString& login);
    Answer write(const QString& login, const QString& kind, const QString& action, const QJsonObject& object);
    // The seeded object with the given predefined code.
    QJsonObject seed(const QString& login, int code);

    QNetworkAccessManager m_network;
    std::unique_ptr<PostgresqlCluster> m_cluster;
    std::unique_ptr<ServerProcess> m_sqliteServer;
    std::unique_ptr<ServerProcess> m_postgresServer;
    ServerProcess* m_server = nullptr;
};

void ServerProtocolTest::initTestCase_data()
{
    QTest::addColumn<bool>("postgres");
    QTest::newRow("sqlite") << false;
    QTest::newRow("postgresql") << true;
}

void ServerProtocolTest::init()
{
    QFETCH_GLOBAL(bool, postgres);
    if (!postgres && !m_sqliteServer) {
        m_sqliteServer = std::make_unique<ServerProcess>();
        QVERIFY(m_sqliteServer->start());
    }
    if (postgres && !m_postgresServer) {
        if (PostgresqlCluster::binDirectory().isEmpty())
            QSKIP("The PostgreSQL server programs are not installed");
        m_cluster = std::make_unique<PostgresqlCluster>();
        QString error;
        QVERIFY2(m_cluster->start(&error), qPrintable(error));
        m_postgresServer = std::make_unique<ServerProcess>();
        QVERIFY(m_postgresServer->start(m_cluster->address()));
    }
    m_server = postgres ? m_postgresServer.get() : m_sqliteServer.get();
    QVERIFY(m_server);
}

Answer ServerProtocolTest::request(const QByteArray& method, const QString& path, const QByteArray& body,
                                   const QByteArray& authorization)
{
    QNetworkRequest request(QUrl(m_server->baseUrl() + path));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    if (!authorization.isEmpty())
        request.setRawHeader("Authorization", authorization);
    QNetworkReply* reply = m_network.sendCustomRequest(request, method, body);
    QSignalSpy finished(reply, &QNetworkReply::finished);
    finished.wait(30000);
    Answer answer{reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), reply->readAll()};
    reply->deleteLater();
    return answer;
}

QString ServerProtocolTest::registerAccount()
{
    const QString login = newId() + QStringLiteral("@example.org");
    const Answer answer =
        request("POST", QStringLiteral("/account/v1/register"),
                json(QJsonObject{{QStringLiteral("login"), login},
                                 {QStringLiteral("password"), QString::fromLatin1(secret)}}));
    return answer.code() == -1 ? login : QString();
}

QByteArray ServerProtocolTest::basic(const QString& login) const
{
    return "Basic " + (login.toUtf8() + ':' + secret).toBase64();
}

QByteArray ServerProtocolTest::token(const QString& login)
{
    const Answer answer =
        request("POST", QStringLiteral("/auth/v1/login/"),
                json(QJsonObject{{QStringLiteral("login"), login},
                                 {QStringLiteral("password"), QString::fromLatin1(secret)}}));
    return "Token " + answer.object().value(QStringLiteral("key")).toString().toLatin1();
}

Answer ServerProtocolTest::write(const QString& login, const QString& kind, const QString& action,
                                 const QJsonObject& object)
{
    const Answer changes =
        request("POST", QStringLiteral("/sync/v1/changes"), R"({"revision":0})", basic(login));
    const QJsonObject body{{QStringLiteral("revision"), changes.result().at(0)},
                           {QStringLiteral("object"), object}};
    return request("POST", QStringLiteral("/sync/v1/%1/%2").arg(kind, action), json(body), basic(login));
}

QJsonObject ServerProtocolTest::seed(const QString& login, int code)
{
    const Answer changes =
        request("POST", QStringLiteral("/sync/v1/changes"), R"({"revision":0})", basic(login));
    for (const QJsonValue& object : changes.result()) {
        if (object.toObject().value(QStringLiteral("PREDEFINED")).toInt() == code)
            return object.toObject();
    }
    return {};
}

void ServerProtocolTest::accountsNeverSeeEachOther()
{
    const QString alice = registerAccount();
    const QString bob = registerAccount();
    QVERIFY(!alice.isEmpty() && !bob.isEmpty());
    const QString id = newId();
    QCOMPARE(write(alice, QStringLiteral("context"), QStringLiteral("create"), context(id)).code(), -1);

    QJsonObject bobs = context(id);
    bobs.insert(QStringLiteral("NAME"), QStringLiteral("Bob's"));
    bobs.insert(QStringLiteral("TIMESTAMP"), 2000);
    QCOMPARE(write(bob, QStringLiteral("context"), QStringLiteral("update"), bobs).code(), 100);
    QCOMPARE(write(bob, QStringLiteral("context"), QStringLiteral("create"), bobs).code(), -1);
    const Answer alicesChanges =
        request("POST", QStringLiteral("/sync/v1/changes"), R"({"revision":1})", basic(alice));
    QCOMPARE(alicesChanges.result().size(), 2);
    QCOMPARE(alicesChanges.result().at(1).toObject().value(QStringLiteral("NAME")).toString(), id);

    const QString time = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
    const QByteArray alicesToken = token(alice);
    const QByteArray bobsToken = token(bob);
    QCOMPARE(request("POST", QStringLiteral("/favorites/v1/"),
                     json(QJsonArray{record("favorites", id, time)}), alicesToken)
                 .array()
                 .size(),
             1);
    QCOMPARE(request("GET", QStringLiteral("/favorites/v1/"), QByteArray(), bobsToken).array().size(), 0);
    request("POST", QStringLiteral("/favorites/v1/delete/"), json(QJsonArray{record("favorites", id, time)}),
            bobsToken);
    QCOMPARE(request("GET", QStringLiteral("/favorites/v1/"), QByteArray(), alicesToken).array().size(), 1);
}

void ServerProtocolTest::malformedRequestsAreRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QByteArray>("authorization");
    QTest::addColumn<int>("status");

    const QByteArray task = R"({"revision":0,"object":{"ID":"t1","NAME":"x","PARENT":"p","TIMESTAMP":1,%1}})";
    QTest::newRow("not JSON") << "/sync/v1/changes" << QByteArray("{\"revision\":") << QByteArray("basic")
                              << 400;
    QTest::newRow("array for object")
        << "/sync/v1/changes" << QByteArray("[0]") << QByteArray("basic") << 400;
    QTest::newRow("negative revision")
        << "/sync/v1/changes" << QByteArray(R"({"revision":-1})") << QByteArray("basic") << 400;
    QTest::newRow("unknown key") << "/sync/v1/task/create"
                                 << QByteArray(task).replace("%1", R"("COLOR":"red")") << QByteArray("basic")
                                 << 400;
    QTest::newRow("date that is none")
        << "/sync/v1/task/create" << QByteArray(task).replace("%1", R"("DUE":"tomorrow")")
        << QByteArray("basic") << 400;
    QTest::newRow("state out of range")
        << "/sync/v1/task/create" << QByteArray(task).replace("%1", R"("STATE":9)") << QByteArray("basic")
        << 400;
    QTest::newRow("no credentials") << "/sync/v1/changes" << QByteArray(R"({"revision":0})") << QByteArray()
                                    << 403;
    QTest::newRow("unknown kind") << "/sync/v1/folder/create" << QByteArray(R"({"revision":0})")
                                  << QByteArray("basic") << 404;
    QTest::newRow("records not a list") << "/favorites/v1/" << QByteArray("{}") << QByteArray("token") << 400;
    QTest::newRow("record missing a field")
        << "/favorites/v1/" << QByteArray(R"([{"object_id":"t1"}])") << QByteArray("token") << 400;
    QTest::newRow("unknown token") << "/favorites/v1/" << QByteArray("[]") << QByteArray("Token 0123") << 401;
    QTest::newRow("body over 8 MiB") << "/favorites/v1/" << QByteArray(9 * 1024 * 1024, ' ')
                                     << QByteArray("token") << 413;
}

void ServerProtocolTest::malformedRequestsAreRefused()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, body);
    QFETCH(QByteArray, authorization);
    QFETCH(int, status);
    const QString login = registerAccount();
    if (authorization == "basic")
        authorization = basic(login);
    else if (authorization == "token")
        authorization = token(login);

    const Answer answer = request("POST", path, body, authorization);
    QCOMPARE(answer.status, status);
    // Every refusal says why, in the form of its side of the protocol.
    QVERIFY(answer.object().contains(QStringLiteral("detail")) ||
            answer.object().contains(QStringLiteral("code")));
    // And the server lives on.
    QCOMPARE(request("POST", QStringLiteral("/sync/v1/changes"), R"({"revision":0})", basic(login)).code(),
             -1);
}

void ServerProtocolTest::badReferencesAnswer103WithTheirForms()
{
    const QString login = registerAccount();
    const QString project = seed(login, 100).value(QStringLiteral("ID")).toString();
    const QString folder = seed(login, 1).value(QStringLiteral("ID")).toString();
    const QString deletedContext = newId();
    const QString parent = newId();
    const QString child = newId();
    QCOMPARE(write(login, "context", "create", context(deletedContext, QString(), 1)).code(), -1);
    QCOMPARE(write(login, "context", "create", context(parent)).code(), -1);
    QCOMPARE(write(login, "context", "create", context(child, parent)).code(), -1);

    const auto task = [](const QString& parent, const QString& context) {
        return QJsonObject{
            {"ID", newId()}, {"NAME", "t"}, {"PARENT", parent}, {"CONTEXT", context}, {"TIMESTAMP", 1}};
    };
    const auto projectIn = [](const QString& parent, const QString& context) {
        return QJsonObject{
            {"ID", newId()}, {"NAME", "p"}, {"PARENT", parent}, {"CONTEXT", context}, {"TIMESTAMP", 1}};
    };
    struct Case
    {
        const char* name;
        const char* kind;
        QJsonObject object;
        QStringList pieces;
    };
    const QList<Case> cases = {
        {"task on a deleted context",
         "task",
         task(project, deletedContext),
         {"Context(", "required for task", "was deleted"}},
        {"task on an unknown context",
         "task",
         task(project, newId()),
         {"Context(", "required for task", "doesn't exist"}},
        {"project on an unknown context",
         "project",
         projectIn(folder, newId()),
         {"Context(", "required for project", "doesn't exist"}},
        {"project inside a project",
         "project",
         projectIn(project, QString()),
         {"Parent(", "isn't folder required for folder"}},
        {"task in an unknown project",
         "task",
         task(newId(), QString()),
         {"Parent(", "required for object", "doesn't exist"}},
        {"task in a folder",
         "task",
         task(folder, QString()),
         {"Parent(", "required for object", "doesn't exist"}},
        {"context under its own child",
         "context",
         context(parent, child),
         {"Parent(", "required for object", "doesn't exist"}},
    };
    for (const Case& testCase : cases) {
        const Answer answer = write(login, testCase.kind, "create", testCase.object);
        const Answer updating = write(login, testCase.kind, "update", testCase.object);
        const Answer& relevant = testCase.kind == QLatin1String("context") ? updating : answer;
        QVERIFY2(relevant.code() == 103, testCase.name);
        for (const QString& piece : testCase.pieces)
            QVERIFY2(relevant.object().value("text").toString().contains(piece), testCase.name);
    }
}

void ServerProtocolTest::changesComeParentsFirstWhateverTheRevision()
{
    const QString login = registerAccount();
    const QStringList chain = {newId(), newId(), newId()};
    QCOMPARE(write(login, "context", "create", context(chain.at(0))).code(), -1);
    QCOMPARE(write(login, "context", "create", context(chain.at(1), chain.at(0))).code(), -1);
    QCOMPARE(write(login, "context", "create", context(chain.at(2), chain.at(1))).code(), -1);
    QJsonObject renamed = context(chain.at(0));
    renamed.insert("NAME", "renamed");
    QCOMPARE(write(login, "context", "update", renamed).code(), -1);

    const Answer changes = request("POST", "/sync/v1/changes", R"({"revision":3})", basic(login));
    QStringList order;
    for (const QJsonValue& object : changes.result())
        order << object.toObject().value("ID").toString();
    QCOMPARE(changes.result().at(0).toInt(), 5);
    QCOMPARE(order.mid(1), (QStringList{chain.at(0), chain.at(2)}));

    // A client standing beyond the server's revision, as after a restore, gets everything.
    QCOMPARE(request("POST", "/sync/v1/changes", R"({"revision":99})", basic(login)).result().size(),
             1 + 16 + 3);
}

void ServerProtocolTest::lastChangedDecidesWhatAChangeOverwrites_data()
{
    QTest::addColumn<QString>("store");
    QTest::addColumn<QString>("deletePath");
    QTest::addColumn<bool>("olderDeleteRemoves");
    QTest::addColumn<bool>("olderSendAfterDeleteRestores");

    QTest::newRow("favorites") << "favorites"
                               << "/favorites/v1/delete/" << false << false;
    QTest::newRow("sorted lists") << "sorting"
                                  << "/sorting/v1/list/delete/" << false << false;
    QTest::newRow("reminders, by arrival") << "reminders"
                                           << "/reminders/v1/delete/" << true << true;
}

void ServerProtocolTest::lastChangedDecidesWhatAChangeOverwrites()
{
    QFETCH(QString, store);
    QFETCH(QString, deletePath);
    QFETCH(bool, olderDeleteRemoves);
    QFETCH(bool, olderSendAfterDeleteRestores);
    const QByteArray key = token(registerAccount());
    const QString path = QStringLiteral("/%1/v1/").arg(store);
    const auto at = [&store](const char* time) {
        return QJsonArray{record(store, "list-1", QLatin1String(time))};
    };

    QCOMPARE(request("POST", path, json(at("2026-05-01T10:00:00Z")), key).array().size(), 1);
    const Answer olderDelete = request("POST", deletePath, json(at("2026-05-01T09:00:00Z")), key);
    QCOMPARE(olderDelete.status, 200);
    QCOMPARE(olderDelete.array().isEmpty(), olderDeleteRemoves);

    request("POST", deletePath, json(at("2026-05-01T11:00:00Z")), key);
    QCOMPARE(request("GET", path, QByteArray(), key).array().size(), 0);
    const Answer olderSend = request("POST", path, json(at("2026-05-01T10:30:00Z")), key);
    QCOMPARE(!olderSend.array().isEmpty(), olderSendAfterDeleteRestores);
    QCOMPARE(request("POST", path, json(at("2026-05-01T12:00:00Z")), key).array().size(), 1);
}

void ServerProtocolTest::failedLoginsAreSlowedDown()
{
    const QString login = registerAccount();
    const auto check = [this, &login](const QByteArray& password) {
        return request("POST", "/account/v1/check",
                       json(QJsonObject{{"login", login}, {"password", QString::fromLatin1(password)}}));
    };
    for (int attempt = 0; attempt < 5; ++attempt)
        QCOMPARE(check("wrong").code(), 201);
    const Answer refused = check(secret);
    QCOMPARE(refused.status, 429);
    QCOMPARE(refused.code(), 105);
    QCOMPARE(request("POST", "/sync/v1/changes", R"({"revision":0})", basic(login)).code(), 105);
}

void ServerProtocolTest::passwordResetMailsAWorkingLink()
{
    const QString login = registerAccount();
    const QByteArray oldToken = token(login);
    QCOMPARE(request("POST", "/account/v1/reset", json(QJsonObject{{"login", login}})).code(), -1);
    QCOMPARE(request("POST", "/account/v1/reset", json(QJsonObject{{"login", "x" + login}})).code(), 200);

    QString mail;
    for (const QFileInfo& file : QDir(m_server->outboxDirectory()).entryInfoList(QDir::Files)) {
        QFile message(file.filePath());
        message.open(QIODevice::ReadOnly);
        const QByteArray text = message.readAll();
        if (text.contains(login.toUtf8()))
            mail = QString::fromUtf8(QByteArray::fromBase64(text.mid(text.indexOf("\r\n\r\n") + 4)));
    }
    const QRegularExpressionMatch link =
        QRegularExpression(QStringLiteral("/api(/account/\\S+)")).match(mail);
    QVERIFY2(link.hasMatch(), qPrintable(mail));

    const Answer page = request("GET", link.captured(1), QByteArray());
    QCOMPARE(page.status, 200);
    const QString password =
        QRegularExpression(QStringLiteral("<code>(\\w+)</code>")).match(page.body).captured(1);
    QVERIFY(password.size() >= 12);
    const QString newSecret = QCryptographicHash::hash(password.toUtf8(), QCryptographicHash::Md5).toHex();
    QCOMPARE(
        request("POST", "/account/v1/check", json(QJsonObject{{"login", login}, {"password", newSecret}}))
            .code(),
        -1);
    QCOMPARE(request("GET", link.captured(1), QByteArray()).status, 404);
    QCOMPARE(request("GET", "/favorites/v1/", QByteArray(), oldToken).status, 401);
}

NORVEL_TEST_MAIN(ServerProtocolTest)
#include "serverprotocoltest.moc"

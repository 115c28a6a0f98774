#include "platform/apihandler.h"
#include "core/settings.h"
#include "platform/apioperation.h"
#include "testlib/recordbuilder.h"
#include "testlib/serverprocess.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QNetworkReply>
#include <QUuid>
#include <QtTest>

#include <memory>

// The server client against the real norvel-server.
class ApiHandlerTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void accountCallsAnswerTheirCodes();
    void newAccountHoldsSeedsParentsFirst();
    void objectCallsAnswerTheirCodes();
    void changesCarryOnlyNewerObjectsWithTheirDates();
    void changedPasswordIsTheNewMd5();
    void tooOldClientGetsCode110();
    void unreachableServerIsANetworkError();

private:
    // The operation once finished; the test owns it.
    std::unique_ptr<ApiOperation> finish(ApiOperation* operation);
    // A new account logged in on m_api.
    QString registerAccount();

    ServerProcess m_server;
    std::unique_ptr<ApiHandler> m_api;
};

namespace {

const QString secret = QStringLiteral("5f4dcc3b5aa765d61d8327deb882cf99");

QString md5(const QString& text)
{
    return QString::fromLatin1(QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Md5).toHex());
}

QString newId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

QList<QPair<QString, QString>> clientKeys(const QString& version)
{
    return {{QStringLiteral("PLATFORM"), QStringLiteral("OSX")}, {QStringLiteral("VERSION"), version}};
}

} // namespace

void ApiHandlerTest::initTestCase()
{
    QVERIFY(m_server.start(QString(), {QStringLiteral("--min-client-version"), QStringLiteral("1.5")}));
    Settings::instance()->setServerUrl(m_server.baseUrl());
    m_api = std::make_unique<ApiHandler>(clientKeys(QStringLiteral("1.11")));
}

std::unique_ptr<ApiOperation> ApiHandlerTest::finish(ApiOperation* operation)
{
    std::unique_ptr<ApiOperation> owned(operation);
    if (!operation->isFinished()) {
        QSignalSpy finished(operation, &ApiOperation::finished);
        finished.wait(20000);
    }
    return owned;
}

QString ApiHandlerTest::registerAccount()
{
    const QString login = newId() + QStringLiteral("@example.org");
    const auto operation = finish(m_api->registerUser(login, secret));
    if (operation->errorCode() != -1)
        return QString();
    m_api->setClientLogin(login);
    m_api->setClientPassword(secret);
    return login;
}

void ApiHandlerTest::accountCallsAnswerTheirCodes()
{
    const QString login = registerAccount();
    QVERIFY(!login.isEmpty());

    const QList<QPair<ApiOperation*, int>> calls = {
        {m_api->registerUser(login, secret), 202},
        {m_api->checkLogin(login, md5(QStringLiteral("wrong"))), 201},
        {m_api->checkLogin(QStringLiteral("nobody@example.org"), secret), 200},
        {m_api->checkLogin(login.toUpper(), secret), -1},
        {m_api->resetPassword(login), -1},
    };
    for (const auto& call : calls) {
        const auto operation = finish(call.first);
        QCOMPARE(operation->networkErrorCode(), 0);
        QCOMPARE(operation->errorCode(), call.second);
    }
}

void ApiHandlerTest::newAccountHoldsSeedsParentsFirst()
{
    QVERIFY(!registerAccount().isEmpty());
    const auto operation = finish(m_api->getChanges(0));
    QCOMPARE(operation->errorCode(), -1);
    QVERIFY(qAbs(operation->serverTime() - QDateTime::currentSecsSinceEpoch()) < 60);

    const QVariantList result = operation->result().toList();
    QCOMPARE(result.value(0), QVariant(1));
    QSet<QString> seen;
    QList<int> codes;
    QList<int> inboxes;
    for (const QVariant& element : result.mid(1)) {
        const QVariantMap object = element.toMap();
        const QString parent = object.value(QStringLiteral("PARENT")).toString();
        const QString context = object.value(QStringLiteral("CONTEXT")).toString();
        QVERIFY2(parent.isEmpty() || seen.contains(parent),
                 qPrintable(object.value(QStringLiteral("NAME")).toString()));
        QVERIFY(context.isEmpty() || seen.contains(context));
        seen.insert(object.value(QStringLiteral("ID")).toString());
        codes << object.value(QStringLiteral("PREDEFINED")).toInt();
        if (object.value(QStringLiteral("INBOX")).toInt() > 0)
            inboxes << object.value(QStringLiteral("INBOX")).toInt();
    }
    std::sort(codes.begin(), codes.end());
    QCOMPARE(codes, (QList<int>{0, 0, 1, 2, 100, 200, 201, 202, 203, 204, 300, 301, 302, 303, 304, 305}));
    QCOMPARE(inboxes, (QList<int>{1, 2}));
}

void ApiHandlerTest::objectCallsAnswerTheirCodes()
{
    QVERIFY(!registerAccount().isEmpty());
    const QString id = newId();
    const QVariantMap context = RecordBuilder::context().withId(id).withTimestamp(1500);

    const auto created = finish(m_api->createContext(context, 1));
    QCOMPARE(created->errorCode(), -1);
    QCOMPARE(created->result(), QVariant(2));

    const QVariantMap older = RecordBuilder::context().withId(id).withTimestamp(1400);
    const QVariantMap unknown = RecordBuilder::context().withId(newId()).withTimestamp(1500);
    const QVariantMap task = RecordBuilder::task().withId(newId()).withContext(newId()).withTimestamp(1500);
    const QList<QPair<ApiOperation*, int>> calls = {
        {m_api->createContext(context, 2), 104}, {m_api->updateContext(unknown, 2), 100},
        {m_api->updateContext(context, 3), 106}, {m_api->updateContext(older, 2), 107},
        {m_api->createTask(task, 2), 103},
    };
    for (const auto& call : calls) {
        const auto operation = finish(call.first);
        QCOMPARE(operation->networkErrorCode(), 0);
        QCOMPARE(operation->errorCode(), call.second);
        if (call.second == 107)
            QCOMPARE(operation->errorText(), QStringLiteral(": Server has newer object; timestamp: 1500"));
        if (call.second == 103)
            QVERIFY(operation->errorText().contains(QStringLiteral("required for task")));
    }
}

void ApiHandlerTest::changesCarryOnlyNewerObjectsWithTheirDates()
{
    QVERIFY(!registerAccount().isEmpty());
    const QVariantList seeds = finish(m_api->getChanges(0))->result().toList();
    QString inbox;
    for (const QVariant& seed : seeds.mid(1)) {
        if (seed.toMap().value(QStringLiteral("INBOX")).toInt() == 1)
            inbox = seed.toMap().value(QStringLiteral("ID")).toString();
    }
    const QDateTime due(QDate(2026, 3, 5), QTime(18, 0), Qt::UTC);
    const QString id = newId();
    const QVariantMap task = RecordBuilder::task(QStringLiteral("Pay rent"))
                                 .withId(id)
                                 .inParent(inbox)
                                 .dueAt(due)
                                 .withTimestamp(1700000000);
    QCOMPARE(finish(m_api->createTask(task, 1))->errorCode(), -1);

    const QVariantList changes = finish(m_api->getChanges(1))->result().toList();
    QCOMPARE(changes.size(), 2);
    QCOMPARE(changes.at(0), QVariant(2));
    const QVariantMap received = changes.at(1).toMap();
    QCOMPARE(received.value(QStringLiteral("ID")).toString(), id);
    QCOMPARE(received.value(QStringLiteral("TYPE")).toString(), QStringLiteral("task"));
    QCOMPARE(received.value(QStringLiteral("DUE")).toDateTime(), due);
    QCOMPARE(received.value(QStringLiteral("START")), QVariant(QString()));
    QCOMPARE(received.value(QStringLiteral("TIMESTAMP")), QVariant(1700000000));
}

void ApiHandlerTest::changedPasswordIsTheNewMd5()
{
    const QString login = registerAccount();
    // The account's secret is the MD5 of the typed "password".
    const auto changed =
        finish(m_api->changePassword(login, QStringLiteral("password"), QStringLiteral("ünïcode")));
    QCOMPARE(changed->errorCode(), -1);
    QCOMPARE(finish(m_api->checkLogin(login, md5(QStringLiteral("ünïcode"))))->errorCode(), -1);
    QCOMPARE(finish(m_api->getChanges(0))->errorCode(), 201);
}

void ApiHandlerTest::tooOldClientGetsCode110()
{
    ApiHandler oldClient(clientKeys(QStringLiteral("1.4")));
    QCOMPARE(finish(oldClient.checkLogin(QStringLiteral("a@example.org"), secret))->errorCode(), 110);
}

void ApiHandlerTest::unreachableServerIsANetworkError()
{
    ServerProcess stopped;
    QVERIFY(stopped.start());
    Settings::instance()->setServerUrl(stopped.baseUrl());
    stopped.stop();
    const auto operation = finish(m_api->getChanges(0));
    Settings::instance()->setServerUrl(m_server.baseUrl());
    QVERIFY(operation->isFinished());
    QCOMPARE(operation->networkErrorCode(), int(QNetworkReply::ConnectionRefusedError));
}

NORVEL_TEST_MAIN(ApiHandlerTest)
#include "apihandlertest.moc"

#include "sync/basesyncmanager.h"
#include "core/settings.h"
#include "platform/apihandler.h"
#include "platform/apioperation.h"
#include "sync/authmanager.h"
#include "testlib/serverprocess.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>
#include <QtTest>

namespace {

const QString secret = QStringLiteral("5f4dcc3b5aa765d61d8327deb882cf99");

// The smallest real frame: favorites kept in two pending lists, as the favorites manager keeps them.
class FavoritesProbe : public BaseSyncManager
{
public:
    QJsonArray toAdd;
    QJsonArray toRemove;
    QJsonArray received;
    int requests = 0;

protected:
    QString apiEndpoint() const override { return QStringLiteral("favorites"); }

    void handleSync() override
    {
        if (!toRemove.isEmpty())
            performDeleteRequest();
        else if (!toAdd.isEmpty())
            performSendRequest();
        else
            performGetRequest();
    }

    void performSendRequest() override
    {
        send(createPostRequest(endpointUrl(QStringLiteral("/v1/")), QJsonDocument(toAdd).toJson()), &toAdd);
    }

    void performDeleteRequest() override
    {
        ++requests;
        handleReply(
            createPostRequest(endpointUrl(QStringLiteral("/v1/delete/")), QJsonDocument(toRemove).toJson()),
            QStringLiteral("Favorites"), [this](const QByteArray&) {
                toRemove = QJsonArray();
                handleSync();
            });
    }

    void performGetRequest() override
    {
        send(createGetRequest(endpointUrl(QStringLiteral("/v1/"))), nullptr);
    }

    void handleServerObjects(const QJsonArray& objects) override { received = objects; }

private:
    void send(QNetworkReply* reply, QJsonArray* delivered)
    {
        ++requests;
        handleReply(reply, QStringLiteral("Favorites"), [this, delivered](const QByteArray& body) {
            if (delivered)
                *delivered = QJsonArray();
            handleServerObjects(QJsonDocument::fromJson(body).array());
            setSyncActive(false);
        });
    }
};

QJsonObject favorite(const QString& id)
{
    return {{QStringLiteral("object_id"), id},
            {QStringLiteral("object_type"), QStringLiteral("task")},
            {QStringLiteral("last_changed"), QDateTime::currentDateTimeUtc().toString(Qt::ISODate)}};
}

} // namespace

// The REST frame and its token against the real norvel-server.
class BaseSyncManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void syncWithoutAccountDoesNothing();
    void favoritesRoundTripWithAFreshToken();
    void failedTokenRequestEndsTheRun();

private:
    // Runs one sync to its end.
    bool runSync(FavoritesProbe& probe);

    ServerProcess m_server;
    QString m_login;
};

void BaseSyncManagerTest::initTestCase()
{
    QVERIFY(m_server.start());
    Settings::instance()->setServerUrl(m_server.baseUrl());
    m_login = QUuid::createUuid().toString(QUuid::WithoutBraces) + QStringLiteral("@example.org");
    ApiHandler api({});
    std::unique_ptr<ApiOperation> registration(api.registerUser(m_login, secret));
    QSignalSpy finished(registration.get(), &ApiOperation::finished);
    QVERIFY(finished.wait(20000));
    QCOMPARE(registration->errorCode(), -1);
}

void BaseSyncManagerTest::init()
{
    Settings::instance()->setClientLogin(m_login);
    Settings::instance()->setClientPassword(secret);
    AuthManager::instance()->logout();
}

bool BaseSyncManagerTest::runSync(FavoritesProbe& probe)
{
    QSignalSpy completed(&probe, &BaseSyncManager::completed);
    probe.sync();
    return completed.count() == 1 || completed.wait(20000);
}

void BaseSyncManagerTest::syncWithoutAccountDoesNothing()
{
    Settings::instance()->unsetClientPassword();
    FavoritesProbe probe;
    QSignalSpy progress(&probe, &BaseSyncManager::inProgressChanged);
    probe.sync();
    QCOMPARE(progress.count(), 0);
    QVERIFY(!probe.inProgress());
}

void BaseSyncManagerTest::favoritesRoundTripWithAFreshToken()
{
    FavoritesProbe probe;
    probe.toAdd = {favorite(QStringLiteral("task-1")), favorite(QStringLiteral("task-2"))};
    QSignalSpy progress(&probe, &BaseSyncManager::inProgressChanged);
    QVERIFY(runSync(probe));
    QVERIFY(AuthManager::instance()->hasToken());
    QCOMPARE(probe.requests, 1);
    QCOMPARE(progress.count(), 2);
    QCOMPARE(probe.received.size(), 2);
    QVERIFY(probe.toAdd.isEmpty());

    probe.toRemove = {favorite(QStringLiteral("task-1"))};
    QVERIFY(runSync(probe));
    // The delete, then a get for the state: the answer to a delete is not read.
    QCOMPARE(probe.requests, 3);
    QCOMPARE(probe.received.size(), 1);
    QCOMPARE(probe.received.at(0).toObject().value(QStringLiteral("object_id")).toString(),
             QStringLiteral("task-2"));
}

void BaseSyncManagerTest::failedTokenRequestEndsTheRun()
{
    Settings::instance()->setClientPassword(QStringLiteral("0000"));
    FavoritesProbe probe;
    QSignalSpy failed(AuthManager::instance(), &AuthManager::serverError);
    QVERIFY(runSync(probe));
    QCOMPARE(failed.count(), 1);
    QCOMPARE(probe.requests, 0);
    QVERIFY(!probe.inProgress());
    QVERIFY(!AuthManager::instance()->hasToken());
}

NORVEL_TEST_MAIN(BaseSyncManagerTest)
#include "basesyncmanagertest.moc"

#include "core/settings.h"
#include "core/startup.h"
#include "platform/apihandler.h"
#include "platform/apioperation.h"
#include "store/datamanager.h"
#include "store/predefineddatahelper.h"
#include "sync/synchandler.h"
#include "sync/syncmanager.h"
#include "testlib/recordbuilder.h"
#include "testlib/serverprocess.h"
#include "testlib/testenvironment.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>
#include <QUuid>
#include <QtTest>

#include <functional>
#include <memory>

// Two installations on one account of the real norvel-server: this process, driven through
// DataManager as the interface drives it, and a second one run by the norvel_sync_peer program.
class SyncTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void changesTravelBetweenInstallations();
    void newerServerCopyIsOverruledWhenSending();
    void serverRestoredToOlderRevisionFetchesEverythingOnce();
    void taskOfUnknownParentMovesToOneStepActions();
    void networkFailureWhileSendingResumesOnNextRun();

private:
    void syncHere();
    QJsonObject syncPeer(const QString& command, const QStringList& ids);
    // Runs action on this thread when the sync on the database thread reaches progress.
    void atProgress(int progress, const std::function<void()>& action);
    QVariantList serverObjects();
    QStringList serverIds();
    QString serverDirectory() const;
    // Stops the server, runs whileStopped, and starts it again on a new port.
    void restartServer(const std::function<void()>& whileStopped);
    int serverRevision();
    QString createTask(const QVariantMap& task);
    static QVariant syncValue(const QString& key);

    ServerProcess m_server;
    QTemporaryDir m_peerHome;
    QString m_login;
    std::unique_ptr<ApiHandler> m_api;
};

namespace {

const QString secret = QStringLiteral("5f4dcc3b5aa765d61d8327deb882cf99");

// The account's inbox, as the first sync made it known.
QString inbox()
{
    return PredefinedDataHelper::instance()->norvelBoxId();
}

QString newId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

std::unique_ptr<ApiOperation> finish(ApiOperation* operation)
{
    if (!operation->isFinished())
        QSignalSpy(operation, &ApiOperation::finished).wait(20000);
    return std::unique_ptr<ApiOperation>(operation);
}

void copyServerDatabase(const QString& from, const QString& to)
{
    const QDir source(from);
    for (const QString& name : source.entryList({QStringLiteral("norvel-server.db*")}, QDir::Files)) {
        QFile::remove(QDir(to).filePath(name));
        QVERIFY(QFile::copy(source.filePath(name), QDir(to).filePath(name)));
    }
}

} // namespace

void SyncTest::initTestCase()
{
    QVERIFY(m_server.start());
    Settings::instance()->setServerUrl(m_server.baseUrl());
    Settings::instance()->setCloudSyncEnabled(true);
    QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    Startup::prepareDatabase();
    DataManager* data = DataManager::instance();
    m_login = newId() + QStringLiteral("@example.org");
    QSignalSpy registered(data, &DataManager::userRegistrationSuccessful);
    data->registerUser(m_login, secret);
    QVERIFY(registered.wait(20000));
    QVERIFY(data->isUserLoggedIn());
    syncHere();
    QVERIFY(data->lastSyncDateTime().isValid());
    m_api = std::make_unique<ApiHandler>(QList<QPair<QString, QString>>{});
    m_api->setClientLogin(m_login);
    m_api->setClientPassword(secret);
}

void SyncTest::syncHere()
{
    DataManager* data = DataManager::instance();
    QSignalSpy activeChanged(data, &DataManager::syncActiveChanged);
    data->startSync();
    while (activeChanged.isEmpty() || activeChanged.last().first().toBool())
        QVERIFY(activeChanged.wait(60000));
    // Confirms what the run left open, as the interface's next edit would.
    data->commitChanges();
}

QJsonObject SyncTest::syncPeer(const QString& command, const QStringList& ids)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString home = m_peerHome.path();
    environment.insert(QStringLiteral("HOME"), home);
    environment.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/.local/share"));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/.config"));
    environment.insert(QStringLiteral("XDG_CACHE_HOME"), home + QStringLiteral("/.cache"));
    QProcess peer;
    peer.setProcessEnvironment(environment);
    peer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    peer.start(QStringLiteral(NORVEL_SYNC_PEER_PATH),
               QStringList{m_server.baseUrl(), m_login, secret, command} + ids);
    if (!peer.waitForFinished(120000) || peer.exitCode() != 0) {
        qWarning() << "The peer failed with code" << peer.exitCode();
        return QJsonObject();
    }
    return QJsonDocument::fromJson(peer.readAllStandardOutput()).object();
}

void SyncTest::atProgress(int progress, const std::function<void()>& action)
{
    auto connection = std::make_shared<QMetaObject::Connection>();
    *connection = connect(
        SyncManager::instance(), &SyncManager::progressChanged, this,
        [progress, action, connection](int reached) {
            if (reached != progress)
                return;
            disconnect(*connection);
            action();
        },
        Qt::BlockingQueuedConnection);
}

QVariantList SyncTest::serverObjects()
{
    return finish(m_api->getChanges(0))->result().toList().mid(1);
}

QStringList SyncTest::serverIds()
{
    QStringList ids;
    for (const QVariant& object : serverObjects())
        ids << object.toMap().value(QStringLiteral("ID")).toString();
    return ids;
}

QString SyncTest::serverDirectory() const
{
    return QFileInfo(m_server.outboxDirectory()).path();
}

void SyncTest::restartServer(const std::function<void()>& whileStopped)
{
    m_server.stop();
    whileStopped();
    QVERIFY(m_server.start());
    Settings::instance()->setServerUrl(m_server.baseUrl());
}

int SyncTest::serverRevision()
{
    return finish(m_api->getChanges(0))->result().toList().value(0).toInt();
}

QString SyncTest::createTask(const QVariantMap& task)
{
    DataManager* data = DataManager::instance();
    if (!data->createTaskLocally(task))
        return QString();
    const QString id = data->lastCreatedObjectId();
    data->commitChanges();
    return id;
}

QVariant SyncTest::syncValue(const QString& key)
{
    QSettings settings(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
                           QStringLiteral("/sync.dat"),
                       QSettings::IniFormat);
    return settings.value(QStringLiteral("Sync/") + key);
}

void SyncTest::changesTravelBetweenInstallations()
{
    DataManager* data = DataManager::instance();
    QVERIFY(data->createProjectLocally(RecordBuilder::folder(QStringLiteral("Home"))));
    const QString folder = data->lastCreatedObjectId();
    QVERIFY(data->createProjectLocally(RecordBuilder::project(QStringLiteral("Garden")).inParent(folder)));
    const QString project = data->lastCreatedObjectId();
    QVERIFY(data->commitChanges());
    const QString task = createTask(RecordBuilder::task(QStringLiteral("Cut the hedge")).inParent(project));
    syncHere();

    const QJsonObject seen = syncPeer(QStringLiteral("sync"), {folder, project, task});
    QCOMPARE(seen.value(folder)[QStringLiteral("NAME")].toString(), QStringLiteral("Home"));
    QCOMPARE(seen.value(project)[QStringLiteral("PARENT")].toString(), folder);
    QCOMPARE(seen.value(task)[QStringLiteral("PARENT")].toString(), project);
    QCOMPARE(seen.value(task)[QStringLiteral("STATE")].toInt(), 0);

    // Timestamps are whole seconds and a tie keeps the local copy: the completion must come later.
    QTest::qWait(1100);
    QCOMPARE(syncPeer(QStringLiteral("complete"), {task}).value(task)[QStringLiteral("STATE")].toInt(), 2);
    syncHere();
    QCOMPARE(data->getTaskById(task).value(QStringLiteral("STATE")).toInt(), 2);
}

void SyncTest::newerServerCopyIsOverruledWhenSending()
{
    DataManager* data = DataManager::instance();
    const QString id = createTask(RecordBuilder::task(QStringLiteral("Draft")).inParent(inbox()));
    syncHere();
    QVariantMap task = data->getTaskById(id);
    task.insert(QStringLiteral("NAME"), QStringLiteral("Mine"));
    QVERIFY(data->updateTaskLocally(task) && data->commitChanges());

    // Another device writes a newer copy after this run has fetched and before it sends.
    const uint serverTimestamp = static_cast<uint>(QDateTime::currentSecsSinceEpoch()) + 1000;
    atProgress(60, [&] {
        QVariantMap theirs = task;
        theirs.insert(QStringLiteral("NAME"), QStringLiteral("Theirs"));
        theirs.insert(QStringLiteral("TIMESTAMP"), serverTimestamp);
        theirs.remove(QStringLiteral("SYNCED"));
        theirs.remove(QStringLiteral("LOCAL"));
        QCOMPARE(finish(m_api->updateTask(theirs, serverRevision()))->errorCode(), -1);
    });
    syncHere();

    const QVariantMap stored = data->getTaskById(id);
    QCOMPARE(stored.value(QStringLiteral("TIMESTAMP")).toUInt(), serverTimestamp + 1);
    QCOMPARE(stored.value(QStringLiteral("SYNCED")).toBool(), true);
    for (const QVariant& object : serverObjects()) {
        if (object.toMap().value(QStringLiteral("ID")) == id)
            QCOMPARE(object.toMap().value(QStringLiteral("NAME")).toString(), QStringLiteral("Mine"));
    }
}

void SyncTest::serverRestoredToOlderRevisionFetchesEverythingOnce()
{
    QTemporaryDir backup;
    restartServer([&] { copyServerDatabase(serverDirectory(), backup.path()); });
    createTask(RecordBuilder::task(QStringLiteral("Lost in the restore")).inParent(inbox()));
    syncHere();

    // The server goes back to the backup between this run's fetch and its send.
    const QString id = createTask(RecordBuilder::task(QStringLiteral("After the restore")).inParent(inbox()));
    atProgress(60, [&] { restartServer([&] { copyServerDatabase(backup.path(), serverDirectory()); }); });
    QSignalSpy started(SyncManager::instance()->syncHandler(), &SyncHandler::started);
    syncHere();

    QCOMPARE(started.count(), 2);
    QCOMPARE(syncValue(QStringLiteral("LastClientRevision")).toInt(), serverRevision());
    QCOMPARE(DataManager::instance()->getTaskById(id).value(QStringLiteral("SYNCED")).toBool(), true);
    QVERIFY(serverIds().contains(id));
}

void SyncTest::taskOfUnknownParentMovesToOneStepActions()
{
    const QString id = createTask(RecordBuilder::task(QStringLiteral("Orphan")).inParent(newId()));
    syncHere();

    const QVariantMap stored = DataManager::instance()->getTaskById(id);
    QCOMPARE(stored.value(QStringLiteral("PARENT")).toString(),
             syncValue(QStringLiteral("OSA_ID")).toString());
    QVERIFY(!stored.value(QStringLiteral("PARENT")).toString().isEmpty());
    QCOMPARE(stored.value(QStringLiteral("SYNCED")).toBool(), true);
}

void SyncTest::networkFailureWhileSendingResumesOnNextRun()
{
    DataManager* data = DataManager::instance();
    QVERIFY(data->createProjectLocally(RecordBuilder::folder(QStringLiteral("Work"))));
    const QString folder = data->lastCreatedObjectId();
    QVERIFY(data->createProjectLocally(RecordBuilder::project(QStringLiteral("Report")).inParent(folder)));
    const QString project = data->lastCreatedObjectId();
    QVERIFY(data->commitChanges());
    QStringList ids{folder, project};
    for (const QString& name : {QStringLiteral("Outline"), QStringLiteral("Figures"), QStringLiteral("Send")})
        ids << createTask(RecordBuilder::task(name).inParent(project));

    // The connection drops once the folder is on the server.
    atProgress(68, [this] { m_server.stop(); });
    QSignalSpy networkError(data, &DataManager::syncNetworkError);
    syncHere();
    QVERIFY(networkError.count() == 1 || networkError.wait(5000));
    QVERIFY(data->getProjectById(folder).value(QStringLiteral("SYNCED")).toBool());
    QVERIFY(!data->getTaskById(ids.last()).value(QStringLiteral("SYNCED")).toBool());

    restartServer([] {});
    syncHere();
    QStringList onServer;
    for (const QString& id : serverIds()) {
        if (ids.contains(id))
            onServer << id;
    }
    onServer.sort();
    ids.sort();
    QCOMPARE(onServer, ids);
    QCOMPARE(syncPeer(QStringLiteral("sync"), {ids.first()}).value(ids.first()).toObject().isEmpty(), false);
}

NORVEL_TEST_MAIN(SyncTest)
#include "synctest.moc"

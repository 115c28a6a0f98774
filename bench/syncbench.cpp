#include "core/settings.h"
#include "platform/apihandler.h"
#include "platform/apioperation.h"
#include "store/datamanager.h"
#include "store/predefineddatahelper.h"
#include "testlib/recordbuilder.h"
#include "testlib/serverprocess.h"

#include <benchmark/benchmark.h>

#include <QSignalSpy>
#include <QUuid>

#include <functional>
#include <memory>

namespace {

const QString secret = QStringLiteral("5f4dcc3b5aa765d61d8327deb882cf99");
constexpr int projectCount = 100;

QString newId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

// Waits for every operation, which run side by side, and ends them.
bool finishAll(const QList<ApiOperation*>& operations)
{
    bool succeeded = true;
    for (ApiOperation* operation : operations) {
        if (!operation->isFinished())
            QSignalSpy(operation, &ApiOperation::finished).wait(120000);
        succeeded = succeeded && operation->errorCode() == -1;
        delete operation;
    }
    return succeeded;
}

// Issues the calls a batch at a time, so that no request waits in the queue long enough to time out.
bool runInBatches(int count, const std::function<ApiOperation*(int)>& issue)
{
    const int batchSize = 200;
    for (int first = 0; first < count; first += batchSize) {
        QList<ApiOperation*> batch;
        for (int index = first; index < qMin(count, first + batchSize); ++index)
            batch << issue(index);
        if (!finishAll(batch))
            return false;
    }
    return true;
}

// The real server on loopback with one account, and this process's installation pointed at it.
class SyncBenchServer
{
public:
    static SyncBenchServer& instance()
    {
        static SyncBenchServer server;
        return server;
    }

    bool isReady() const { return m_ready; }

    // An account holding objectCount objects: projects, then tasks spread over them.
    QString accountWithObjects(int objectCount)
    {
        const QString login = newId() + QStringLiteral("@example.org");
        ApiHandler api({});
        if (!finishAll({api.registerUser(login, secret)}))
            return QString();
        api.setClientLogin(login);
        api.setClientPassword(secret);
        QStringList projectIds;
        for (int index = 0; index < projectCount; ++index)
            projectIds << newId();
        const bool projectsCreated = runInBatches(projectCount, [&](int index) {
            return api.createProject(
                RecordBuilder::project().withId(projectIds.at(index)).withTimestamp(1000), 1);
        });
        return projectsCreated &&
                       runInBatches(objectCount - projectCount,
                                    [&](int index) {
                                        const QVariantMap task =
                                            RecordBuilder::task(QStringLiteral("Task %1").arg(index))
                                                .withId(newId())
                                                .inParent(projectIds.at(index % projectCount))
                                                .withTimestamp(1000);
                                        return api.createTask(task, 1);
                                    })
                   ? login
                   : QString();
    }

private:
    SyncBenchServer()
    {
        m_ready = m_server.start();
        Settings::instance()->setServerUrl(m_server.baseUrl());
        Settings::instance()->setCloudSyncEnabled(true);
    }

    ServerProcess m_server;
    bool m_ready = false;
};

bool logIn(const QString& login)
{
    DataManager* data = DataManager::instance();
    QSignalSpy succeeded(data, &DataManager::checkLoginSuccessful);
    data->checkLogin(login, secret);
    return succeeded.wait(20000);
}

// Starts from an empty installation logged in to the account.
bool emptyInstallation(const QString& login)
{
    DataManager* data = DataManager::instance();
    if (!data->isUserLoggedIn() && !logIn(login))
        return false;
    data->logout();
    return logIn(login);
}

bool syncOnce()
{
    DataManager* data = DataManager::instance();
    QSignalSpy activeChanged(data, &DataManager::syncActiveChanged);
    data->startSync();
    while (activeChanged.isEmpty() || activeChanged.last().first().toBool()) {
        if (!activeChanged.wait(120000))
            return false;
    }
    // What the run left open is the interface's to confirm.
    data->commitChanges();
    return true;
}

// The first sync of an account of objectCount objects into an empty installation.
void firstSyncOfAccount(benchmark::State& state)
{
    SyncBenchServer& server = SyncBenchServer::instance();
    const QString login = server.isReady() ? server.accountWithObjects(int(state.range(0))) : QString();
    if (login.isEmpty()) {
        state.SkipWithError("the server or its account could not be prepared");
        return;
    }
    for (auto _ : state) {
        state.PauseTiming();
        const bool prepared = emptyInstallation(login);
        state.ResumeTiming();
        if (!prepared || !syncOnce()) {
            state.SkipWithError("the sync did not run");
            break;
        }
    }
    state.counters["tasks"] = DataManager::instance()->getTaskCount();
    DataManager::instance()->logout();
}
BENCHMARK(firstSyncOfAccount)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();

// A sync that sends taskCount tasks made locally, one request each.
void sendOfLocalTasks(benchmark::State& state)
{
    SyncBenchServer& server = SyncBenchServer::instance();
    const QString login = server.isReady() ? server.accountWithObjects(0) : QString();
    if (login.isEmpty() || !emptyInstallation(login) || !syncOnce()) {
        state.SkipWithError("the server or its account could not be prepared");
        return;
    }
    DataManager* data = DataManager::instance();
    const QString inbox = PredefinedDataHelper::instance()->norvelBoxId();
    for (auto _ : state) {
        state.PauseTiming();
        for (int index = 0; index < state.range(0); ++index)
            data->createTaskLocally(
                RecordBuilder::task(QStringLiteral("Local %1").arg(index)).inParent(inbox));
        data->commitChanges();
        state.ResumeTiming();
        if (!syncOnce()) {
            state.SkipWithError("the sync did not run");
            break;
        }
    }
    data->logout();
}
BENCHMARK(sendOfLocalTasks)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();

} // namespace

#include "synchandler.h"

#include "core/logmanager.h"
#include "core/startup.h"
#include "platform/apihandler.h"
#include "platform/apioperation.h"
#include "reminders/notificationmanager.h"
#include "services/repeatedtaskhelper.h"
#include "store/contextstore.h"
#include "store/databasehandler.h"
#include "store/objectkeys.h"
#include "store/predefineddatahelper.h"
#include "store/projectstore.h"
#include "store/taskstore.h"

#include <QDataStream>
#include <QDateTime>
#include <QEventLoop>
#include <QFile>
#include <QMetaEnum>
#include <QNetworkReply>
#include <QSettings>
#include <QTimer>

#include <functional>

namespace {

enum ObjectKind { ContextObject, ProjectObject, TaskObject };

const QString syncKey = QStringLiteral("SYNC");
const QString lastClientRevisionKey = QStringLiteral("LastClientRevision");
const QString norvelBoxIdKey = QStringLiteral("NB_ID");
const QString oneStepActionsIdKey = QStringLiteral("OSA_ID");
const QString predefinedIdsKey = QStringLiteral("predefined_ids");
const QString newerObjectText = QStringLiteral(": Server has newer object; timestamp: ");

QPair<QString, QString> readCredentials()
{
    QPair<QString, QString> credentials;
    QFile file(Startup::dataFilePath(QStringLiteral("config.dat")));
    if (file.open(QIODevice::ReadOnly)) {
        QDataStream stream(&file);
        stream >> credentials.first >> credentials.second;
    }
    return credentials;
}

bool containsAll(const QString& text, std::initializer_list<const char*> parts)
{
    for (const char* part : parts) {
        if (!text.contains(QLatin1String(part)))
            return false;
    }
    return true;
}

void waitForOperation(ApiOperation* operation)
{
    if (operation->isFinished())
        return;
    QEventLoop loop;
    QObject::connect(operation, &ApiOperation::finished, &loop, &QEventLoop::quit);
    loop.exec();
}

// Server objects that a brand-new account brings along and that this installation retires at once.
struct RetireLists
{
    QList<QVariantMap> tasks;
    QList<QVariantMap> projects;
    QList<QVariantMap> contexts;
};

struct ApplyRun
{
    int revision = 0;
    bool success = true;
    QStringList predefinedIds;
    RetireLists retired;
    QString norvelBoxId;
    QString oneStepActionsId;
};

struct SendRow
{
    const char* message;
    ObjectKind kind;
    std::function<QList<DataObject>()> select;
    const char* failureMessage;
    int progress;
};

} // namespace

struct SyncHandler::Private
{
    explicit Private(SyncHandler* q);

    SyncHandler* q;
    ApiHandler api;
    QSettings settings;
    DatabaseHandler* database = DatabaseHandler::instance();
    bool syncing = false;
    qint32 lastClientRevision = 0;
    QString norvelBoxId;
    QString oneStepActionsId;
    bool restartRequested = false;
    bool fullResyncRequested = false;
    QString lastDeniedObjectId;
    qint32 serverTimeDifference = 0;

    void loadSyncState();
    void handleChangesReply(ApiOperation* operation);
    void finishSync();
    bool finishAccountCall(ApiOperation* operation);
    void reportNetworkError(ApiOperation* operation);
    void reportServerError(ApiOperation* operation);
    void updateServerTimeDifference(int serverTime);
    void saveLastClientRevision(int revision);

    bool applyServerChanges(const QVariantList& changes);
    bool replacePredefinedSeed(QVariantMap& object, int code, const QString& type, QSettings& predefined,
                               ApplyRun& run);
    void applyInboxProject(const QVariantMap& object, int inbox, ApplyRun& run);
    bool applyServerTask(QVariantMap& object);
    bool applyServerObject(const QVariantMap& object, ObjectKind kind);
    void takeOverInboxIds(const ApplyRun& run);
    void retireSeeds(const RetireLists& retired);

    bool sendLocalChanges();
    bool sendObjectList(const QList<DataObject>& objects, ObjectKind kind);
    bool sendObject(const DataObject& object, ObjectKind kind);
    bool repairReference(QVariantMap& object, const QString& errorText);
    void restoreBeforeSending(const QList<DataObject>& objects, int row);

    DataObject storedObject(ObjectKind kind, const QString& id);
    bool createStored(ObjectKind kind, const QVariantMap& object);
    bool updateStored(ObjectKind kind, const QVariantMap& object);
    bool updateLocally(ObjectKind kind, const QVariantMap& object);
    ApiOperation* issue(ObjectKind kind, bool create, const QVariantMap& object);
};

SyncHandler::Private::Private(SyncHandler* q)
    : q(q)
    , api({{QStringLiteral("PLATFORM"), QStringLiteral("OSX")},
           {QStringLiteral("VERSION"), QStringLiteral("1.11")}})
    , settings(Startup::dataFilePath(QStringLiteral("sync.dat")), QSettings::IniFormat)
{
    settings.beginGroup(QStringLiteral("Sync"));
}

SyncHandler::SyncHandler(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this))
{
    connect(&d->api, &ApiHandler::proxyAuthenticationRequired, this,
            &SyncHandler::proxyAuthenticationRequired);
}

SyncHandler::~SyncHandler() = default;

bool SyncHandler::start()
{
    if (d->syncing)
        return false;
    d->restartRequested = false;
    const QPair<QString, QString> credentials = readCredentials();
    d->loadSyncState();
    if (credentials.first.isEmpty() || credentials.second.isEmpty()) {
        QLOG_ERROR() << "User login or password is not set. Can't start sync process!";
        return false;
    }
    d->api.setClientLogin(credentials.first);
    d->api.setClientPassword(credentials.second);
    QLOG_INFO() << "Sync process started...";
    d->syncing = true;
    emit started();
    QLOG_INFO() << "Getting changes from server...";
    ApiOperation* operation = d->api.getChanges(d->fullResyncRequested ? 0 : d->lastClientRevision, nullptr);
    connect(operation, &ApiOperation::finished, this,
            [this, operation] { d->handleChangesReply(operation); });
    return true;
}

void SyncHandler::abort()
{
    d->finishSync();
}

bool SyncHandler::registerUser(const QString& login, const QString& password)
{
    return d->finishAccountCall(d->api.registerUser(login, password, nullptr));
}

bool SyncHandler::checkLogin(const QString& login, const QString& password)
{
    return d->finishAccountCall(d->api.checkLogin(login, password, nullptr));
}

bool SyncHandler::resetPassword(const QString& login)
{
    return d->finishAccountCall(d->api.resetPassword(login, nullptr));
}

bool SyncHandler::changePassword(const QString& login, const QString& oldPassword, const QString& newPassword)
{
    return d->finishAccountCall(d->api.changePassword(login, oldPassword, newPassword, nullptr));
}

void SyncHandler::Private::loadSyncState()
{
    settings.sync();
    lastClientRevision = settings.value(lastClientRevisionKey).toInt();
    norvelBoxId = settings.value(norvelBoxIdKey, PredefinedDataHelper::defaultNorvelBoxId).toString();
    oneStepActionsId =
        settings.value(oneStepActionsIdKey, PredefinedDataHelper::defaultOneStepActionsId).toString();
}

void SyncHandler::Private::handleChangesReply(ApiOperation* operation)
{
    operation->deleteLater();
    fullResyncRequested = false;
    if (operation->networkErrorCode() != 0) {
        reportNetworkError(operation);
        finishSync();
        return;
    }
    if (operation->errorCode() != -1) {
        reportServerError(operation);
        finishSync();
        return;
    }
    // Aborted while the request was out: the run has already been reported as finished.
    if (!syncing)
        return;
    updateServerTimeDifference(operation->serverTime());
    emit q->progressChanged(10);
    if (applyServerChanges(operation->result().toList())) {
        sendLocalChanges();
        if (!restartRequested)
            emit q->progressChanged(100);
    }
    finishSync();
    if (restartRequested)
        QTimer::singleShot(0, q, &SyncHandler::start);
}

void SyncHandler::Private::finishSync()
{
    syncing = false;
    if (restartRequested)
        return;
    emit q->finished();
    QLOG_INFO() << "Sync process completed.";
}

bool SyncHandler::Private::finishAccountCall(ApiOperation* operation)
{
    waitForOperation(operation);
    operation->deleteLater();
    if (operation->networkErrorCode() != 0) {
        reportNetworkError(operation);
        return false;
    }
    if (operation->errorCode() != -1) {
        reportServerError(operation);
        return false;
    }
    return true;
}

void SyncHandler::Private::reportNetworkError(ApiOperation* operation)
{
    const char* name =
        QMetaEnum::fromType<QNetworkReply::NetworkError>().valueToKey(operation->networkErrorCode());
    QLOG_ERROR() << "Network error: " << name << ".  " << operation->errorText();
    emit q->networkError();
}

void SyncHandler::Private::reportServerError(ApiOperation* operation)
{
    QLOG_ERROR() << "Server error: " << operation->errorCode() << ".  " << operation->errorText();
    emit q->serverError(operation->errorCode());
}

void SyncHandler::Private::updateServerTimeDifference(int serverTime)
{
    const qint32 difference = serverTime - static_cast<qint32>(QDateTime::currentSecsSinceEpoch());
    if (difference == serverTimeDifference)
        return;
    serverTimeDifference = difference;
    QLOG_INFO() << "Server and local time difference changed: " << difference;
}

void SyncHandler::Private::saveLastClientRevision(int revision)
{
    if (revision == lastClientRevision)
        return;
    lastClientRevision = revision;
    QLOG_INFO() << "Saving last client revision.. Revision #" << revision;
    settings.setValue(lastClientRevisionKey, revision);
    settings.sync();
}

// Receiving.

bool SyncHandler::Private::applyServerChanges(const QVariantList& changes)
{
    if (changes.size() < 2) {
        emit q->progressChanged(60);
        return true;
    }
    if (!database->beginTransaction()) {
        QLOG_ERROR() << "Unable to begin transaction!";
        return false;
    }
    QSettings predefined(Startup::dataFilePath(QStringLiteral("predefined_objects.dat")),
                         QSettings::IniFormat);
    ApplyRun run;
    run.revision = changes.first().toInt();
    run.predefinedIds =
        predefined.value(predefinedIdsKey).toString().split(QLatin1Char(','), Qt::SkipEmptyParts);
    const int count = changes.size();
    const int step = count < 10 ? 1 : count / 10;
    for (int i = 1; i < count; ++i) {
        QVariantMap object = changes.at(i).toMap();
        const int code = object.take(QStringLiteral("PREDEFINED")).toInt();
        const QString type = object.take(QStringLiteral("TYPE")).toString();
        const int inbox = object.take(QStringLiteral("INBOX")).toInt();
        if (code != 0 && replacePredefinedSeed(object, code, type, predefined, run))
            continue;
        object.insert(syncKey, true);
        if (run.revision == 1 && code >= 200 && code <= 204)
            run.retired.tasks << object;
        else if (run.revision == 1 && code == 100)
            run.retired.projects << object;
        if (type == QLatin1String("project") && inbox > 0) {
            applyInboxProject(object, inbox, run);
            continue;
        }
        if (type == QLatin1String("context") && !applyServerObject(object, ContextObject))
            run.success = false;
        else if (type == QLatin1String("project") && !applyServerObject(object, ProjectObject))
            run.success = false;
        else if (type == QLatin1String("task") && !applyServerTask(object))
            run.success = false;
        if (!run.success) {
            database->rollbackChanges();
            return false;
        }
        // i stays below count, so this stays at 10 during the whole phase.
        if (i % step == 0)
            emit q->progressChanged((i / count) * 45 + 10);
    }
    if (!database->commitChanges())
        return false;
    predefined.setValue(predefinedIdsKey, run.predefinedIds.join(QLatin1Char(',')));
    takeOverInboxIds(run);
    if (run.revision < 1) {
        QLOG_ERROR() << "Broken server revision! Value is " << run.revision;
    } else {
        saveLastClientRevision(run.revision);
    }
    retireSeeds(run.retired);
    emit q->progressChanged(60);
    return run.success;
}

// True when the server's seed took the place of the local one and nothing more is to be done.
bool SyncHandler::Private::replacePredefinedSeed(QVariantMap& object, int code, const QString& type,
                                                 QSettings& predefined, ApplyRun& run)
{
    const QString codeKey = QString::number(code);
    const QString oldId = predefined.value(codeKey).toString();
    const QString newId = object.value(idKey).toString();
    predefined.setValue(codeKey, newId);
    if (oldId.isEmpty() || oldId == newId) {
        if (run.revision == 1 && (code == 1 || code == 2))
            run.retired.projects << object;
        else if (run.revision == 1 && code >= 300 && code <= 305)
            run.retired.contexts << object;
        run.predefinedIds << newId;
        return false;
    }
    const int index = run.predefinedIds.indexOf(oldId);
    if (index >= 0)
        run.predefinedIds[index] = newId;
    bool replaced = false;
    // The name the user gave the local seed wins over the server's.
    if (type == QLatin1String("project")) {
        object.insert(QStringLiteral("NAME"),
                      database->projects()->getProjectById(oldId).value(QStringLiteral("NAME")));
        replaced = database->projects()->updatePredefinedFolder(oldId, newId);
        replaced = database->projects()->updateProjectRemotely(object) && replaced;
    } else {
        object.insert(QStringLiteral("NAME"),
                      database->contexts()->getContextById(oldId).value(QStringLiteral("NAME")));
        const bool deleted = object.value(stateKey).toInt() != 0;
        replaced = database->contexts()->updatePredefinedContext(oldId, newId, deleted);
        replaced = database->contexts()->updateContextRemotely(object) && replaced;
    }
    if (!replaced)
        run.success = false;
    return true;
}

// The two inbox projects are never stored: they only tell which id the account gives them.
void SyncHandler::Private::applyInboxProject(const QVariantMap& object, int inbox, ApplyRun& run)
{
    const QString id = object.value(idKey).toString();
    const QString& currentId = inbox == 1 ? norvelBoxId : oneStepActionsId;
    if (id == currentId)
        return;
    QLOG_INFO() << (inbox == 1 ? "Changing NorvelBox project ID..."
                               : "Changing OneStepActions project ID...");
    if (!database->tasks()->updateTaskParents(currentId, id))
        run.success = false;
    (inbox == 1 ? run.norvelBoxId : run.oneStepActionsId) = id;
}

bool SyncHandler::Private::applyServerTask(QVariantMap& object)
{
    const QString periodKey = QStringLiteral("PERIOD");
    if (!object.value(periodKey).toString().isEmpty()) {
        // A repeat needs a due date to count from.
        if (object.value(QStringLiteral("DUE")).toDateTime().isNull())
            object.insert(periodKey, QString());
        else
            object = RepeatedTaskHelper::repairTaskDates(object);
    }
    const QString id = object.value(idKey).toString();
    NotificationManager* notifications = NotificationManager::instance();
    if (lastClientRevision > 0) {
        const DOTask stored = database->tasks()->getTaskById(id);
        if (!stored.isEmpty() && notifications->hasScheduledNotifications(id))
            notifications->rescheduleReminders(stored, object);
    }
    if (!applyServerObject(object, TaskObject))
        return false;
    const int state = object.value(stateKey).toInt();
    if (state > 0)
        notifications->removeAllNotificationsById(id);
    if (state == 1)
        RepeatedTaskHelper::instance()->removeAllReminders(id);
    return true;
}

// The newer copy wins; on a tie the local one stays, and leaves in the send phase if unsynced.
bool SyncHandler::Private::applyServerObject(const QVariantMap& object, ObjectKind kind)
{
    const DataObject stored = storedObject(kind, object.value(idKey).toString());
    if (stored.isEmpty())
        return createStored(kind, object);
    const quint32 localTimestamp =
        stored.value(timestampKey).toUInt() + static_cast<quint32>(serverTimeDifference);
    if (localTimestamp < object.value(timestampKey).toUInt())
        return updateStored(kind, object);
    return true;
}

void SyncHandler::Private::takeOverInboxIds(const ApplyRun& run)
{
    bool changed = false;
    if (!run.norvelBoxId.isEmpty() && run.norvelBoxId != norvelBoxId) {
        settings.setValue(norvelBoxIdKey, run.norvelBoxId);
        norvelBoxId = run.norvelBoxId;
        changed = true;
    }
    if (!run.oneStepActionsId.isEmpty() && run.oneStepActionsId != oneStepActionsId) {
        settings.setValue(oneStepActionsIdKey, run.oneStepActionsId);
        oneStepActionsId = run.oneStepActionsId;
        changed = true;
    }
    settings.sync();
    if (changed)
        emit q->buildInProjectsUpdated();
}

// The deletions are written as local changes, so the send phase of this run takes them to the
// server. Their transaction is left to the next commit of whoever comes next.
void SyncHandler::Private::retireSeeds(const RetireLists& retired)
{
    const QList<QPair<ObjectKind, const QList<QVariantMap>*>> lists = {
        {TaskObject, &retired.tasks}, {ProjectObject, &retired.projects}, {ContextObject, &retired.contexts}};
    for (const auto& list : lists) {
        for (QVariantMap object : *list.second) {
            object.remove(syncKey);
            object.remove(timestampKey);
            object.insert(stateKey, 1);
            updateLocally(list.first, object);
        }
    }
}

// Sending.

bool SyncHandler::Private::sendLocalChanges()
{
    TaskStore* tasks = database->tasks();
    ProjectStore* projects = database->projects();
    ContextStore* contexts = database->contexts();
    // Parents leave before their children; deletions children first.
    const QList<SendRow> rows = {
        {"Sending contexts to the server...", ContextObject,
         [contexts] { return contexts->getContextsToUpdate(); }, "Unable to sync contexts!", 64},
        {"Sending folders to the server...", ProjectObject,
         [projects] { return projects->getFoldersToUpdate(); }, "Unable to sync folders!", 68},
        {"Sending projects to the server...", ProjectObject,
         [projects] { return projects->getProjectsToUpdate(); }, "Unable to sync projects!", 72},
        {"Sending tasks to the server...", TaskObject, [tasks] { return tasks->getTasksToUpdate(); },
         "Unable to sync tasks!", 76},
        {"Sending deleted/completed tasks to the server...", TaskObject,
         [tasks] { return tasks->getTasksToDeleteOrComplete(); }, "Unable to sync tasks!", 80},
        {"Sending deleted/completed projects to the server...", ProjectObject,
         [projects] { return projects->getProjectsToDeleteOrComplete(); }, "Unable to sync projects!", 84},
        {"Sending deleted folders to the server...", ProjectObject,
         [projects] { return projects->getFoldersToDelete(); }, "Unable to sync folders!", 88},
        {"Sending deleted contexts to the server...", ContextObject,
         [contexts] { return contexts->getContextsToDelete(); }, "Unable to sync contexts!", 92},
    };
    bool success = true;
    for (int row = 0; row < rows.size(); ++row) {
        QLOG_INFO() << rows.at(row).message;
        if (success) {
            const QList<DataObject> objects = rows.at(row).select();
            restoreBeforeSending(objects, row);
            // The list read before the restore goes out: the object leaves with its old state.
            success = sendObjectList(objects, rows.at(row).kind);
            if (!success) {
                QLOG_ERROR() << rows.at(row).failureMessage;
            }
        }
        emit q->progressChanged(rows.at(row).progress);
    }
    return success;
}

// A deleted or completed parent that still holds live children is brought back locally.
void SyncHandler::Private::restoreBeforeSending(const QList<DataObject>& objects, int row)
{
    const int deletedProjectsRow = 5;
    const int deletedFoldersRow = 6;
    const int deletedContextsRow = 7;
    if (row < deletedProjectsRow)
        return;
    for (const DataObject& object : objects) {
        const int state = object.value(stateKey).toInt();
        bool keep = false;
        const char* label = "Context ";
        if (row == deletedProjectsRow) {
            keep = ((state & 1) && database->projects()->projectHasTasks(object)) ||
                   ((state & 2) && database->projects()->projectHasActiveTasks(object));
            label = "Project ";
        } else if (row == deletedFoldersRow) {
            keep = state == 1 && database->projects()->folderHasActiveObjects(object);
            label = "Folder ";
        } else if (row == deletedContextsRow) {
            keep = state == 1 && database->contexts()->contextHasActiveObjects(object);
        }
        if (!keep)
            continue;
        DataObject restored = object;
        restored.insert(stateKey, 0);
        restored.remove(QStringLiteral("CHILDREN"));
        restored.remove(QStringLiteral("LEVEL"));
        if (row == deletedContextsRow)
            database->contexts()->updateContextRemotely(restored);
        else
            database->projects()->updateProjectRemotely(restored);
        QLOG_INFO() << label << object.value(idKey).toString() << " restored with state: " << state;
    }
}

bool SyncHandler::Private::sendObjectList(const QList<DataObject>& objects, ObjectKind kind)
{
    QLOG_INFO() << "Object count to update: " << objects.size();
    for (const DataObject& object : objects) {
        if (!sendObject(object, kind))
            return false;
    }
    return true;
}

bool SyncHandler::Private::sendObject(const DataObject& object, ObjectKind kind)
{
    QVariantMap map = object;
    const bool local = map.take(QStringLiteral("LOCAL")).toBool();
    for (const char* key : {"SYNCED", "LEVEL", "CHILDREN"})
        map.remove(QLatin1String(key));
    map.insert(timestampKey, map.value(timestampKey).toUInt() + static_cast<quint32>(serverTimeDifference));
    std::unique_ptr<ApiOperation, void (*)(ApiOperation*)> operation(
        issue(kind, local, map), [](ApiOperation* op) { op->deleteLater(); });
    bool denied = false;
    for (int pass = 1;; ++pass) {
        waitForOperation(operation.get());
        if (operation->networkErrorCode() != 0) {
            reportNetworkError(operation.get());
            return false;
        }
        const int code = operation->errorCode();
        const QString errorText = operation->errorText();
        if (code != -1) {
            QLOG_ERROR() << "Server error: " << code << ".  " << errorText;
        }
        if (code == 100) {
            operation.reset(issue(kind, true, map));
        } else if (code == 104) {
            operation.reset(issue(kind, false, map));
        } else if (code == 103 && repairReference(map, errorText)) {
            database->commitChanges();
            restartRequested = fullResyncRequested = true;
            return false;
        } else if (code == 106) {
            const QString id = map.value(idKey).toString();
            if (id != lastDeniedObjectId) {
                lastDeniedObjectId = id;
                restartRequested = fullResyncRequested = true;
                return false;
            }
            // Refused twice in a row: taken as sent, so that one object can't restart runs forever.
            lastDeniedObjectId.clear();
            denied = true;
            break;
        } else if (code == 107) {
            const QString timestamp =
                errorText.mid(errorText.indexOf(newerObjectText) + newerObjectText.size());
            map.insert(timestampKey, timestamp.split(QLatin1Char('.')).first().toUInt() + 1);
            operation.reset(issue(kind, false, map));
        }
        if (pass == 3)
            return false;
        if (code == -1)
            break;
    }
    updateServerTimeDifference(operation->serverTime());
    map.insert(syncKey, true);
    map.insert(QStringLiteral("SYNCED"), true);
    map.insert(QStringLiteral("LOCAL"), false);
    updateStored(kind, map);
    if (!denied)
        saveLastClientRevision(operation->result().toInt());
    return true;
}

bool SyncHandler::Private::repairReference(QVariantMap& object, const QString& errorText)
{
    if (containsAll(errorText, {"Context(", "required for task", "was deleted"}) ||
        containsAll(errorText, {"Context(", "required for task", "doesn't exist"})) {
        object.insert(QStringLiteral("CONTEXT"), QString());
        database->tasks()->updateTaskLocally(object, nullptr);
        return true;
    }
    if (containsAll(errorText, {"Context(", "required for project", "doesn't exist"})) {
        object.insert(QStringLiteral("CONTEXT"), QString());
        database->projects()->updateProjectLocally(object, nullptr, nullptr);
        return true;
    }
    if (!containsAll(errorText, {"Parent(", "isn't folder required for folder"}) &&
        !containsAll(errorText, {"Parent(", "required for object", "doesn't exist"}))
        return false;
    const QString parentKey = QStringLiteral("PARENT");
    if (object.contains(QStringLiteral("PERIOD"))) {
        object.insert(parentKey, oneStepActionsId);
        database->tasks()->updateTaskLocally(object, nullptr);
    } else {
        object.insert(parentKey, QString());
        updateLocally(object.contains(QStringLiteral("FOLDER")) ? ProjectObject : ContextObject, object);
    }
    return true;
}

// The operations of each kind of object.

DataObject SyncHandler::Private::storedObject(ObjectKind kind, const QString& id)
{
    switch (kind) {
    case ContextObject:
        return database->contexts()->getContextById(id);
    case ProjectObject:
        return database->projects()->getProjectById(id);
    case TaskObject:
        return database->tasks()->getTaskById(id);
    }
    return DataObject();
}

bool SyncHandler::Private::createStored(ObjectKind kind, const QVariantMap& object)
{
    switch (kind) {
    case ContextObject:
        return database->contexts()->createContextRemotely(object);
    case ProjectObject:
        return database->projects()->createProjectRemotely(object);
    case TaskObject:
        return database->tasks()->createTaskRemotely(object);
    }
    return false;
}

bool SyncHandler::Private::updateStored(ObjectKind kind, const QVariantMap& object)
{
    switch (kind) {
    case ContextObject:
        return database->contexts()->updateContextRemotely(object);
    case ProjectObject:
        return database->projects()->updateProjectRemotely(object);
    case TaskObject:
        return database->tasks()->updateTaskRemotely(object);
    }
    return false;
}

bool SyncHandler::Private::updateLocally(ObjectKind kind, const QVariantMap& object)
{
    switch (kind) {
    case ContextObject:
        return database->contexts()->updateContextLocally(object, nullptr);
    case ProjectObject:
        return database->projects()->updateProjectLocally(object, nullptr, nullptr);
    case TaskObject:
        return database->tasks()->updateTaskLocally(object, nullptr);
    }
    return false;
}

ApiOperation* SyncHandler::Private::issue(ObjectKind kind, bool create, const QVariantMap& object)
{
    switch (kind) {
    case ContextObject:
        return create ? api.createContext(object, lastClientRevision, nullptr)
                      : api.updateContext(object, lastClientRevision, nullptr);
    case ProjectObject:
        return create ? api.createProject(object, lastClientRevision, nullptr)
                      : api.updateProject(object, lastClientRevision, nullptr);
    case TaskObject:
        return create ? api.createTask(object, lastClientRevision, nullptr)
                      : api.updateTask(object, lastClientRevision, nullptr);
    }
    return nullptr;
}

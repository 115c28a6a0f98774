#include "projectstore.h"

#include "core/clock.h"
#include "core/logmanager.h"
#include "store/databasehandler.h"
#include "store/dataobjectconverter.h"
#include "store/dayquery.h"
#include "store/objectkeys.h"
#include "store/predefineddatahelper.h"
#include "store/storesettings.h"
#include "store/taskstore.h"
#include "store/treehierarchybuilder.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QSet>
#include <QSqlRecord>

namespace {
const QString projectTable = QStringLiteral("project");

const QString projectColumns = QStringLiteral("SELECT id, name, parent, memo, start, due, context, folder, "
                                              "timestamp, state, synced, local FROM project ");

// Every row with its depth: the inner query climbs through parent whatever the state of the rows on the way.
const QString levelQuery = QStringLiteral(
    "SELECT id, name, parent, memo, start, due, context, folder, timestamp, state, synced, local, (WITH "
    "RECURSIVE tree_level(obj_id, parent, level) AS ( SELECT id, parent, 0 FROM project WHERE id = prj.id "
    "UNION SELECT project.id, project.parent, tree_level.level + 1 FROM project JOIN tree_level ON "
    "project.id = tree_level.parent) SELECT MAX(level) FROM tree_level) AS level FROM project prj ");

const QString dayProjectColumns = QStringLiteral("SELECT id, name, parent, memo, start, due, context, "
                                                 "timestamp, state, synced, local, folder FROM project ");

// %1 is the start of the day, %2 the start of the next one.
const QString todayCondition = QStringLiteral(
    "WHERE (state = 0 AND (due < %1 OR (due >= %1 AND due < %2) OR (due <> '' AND due >= %2 AND (start = '' "
    "OR start < %2)) OR (due = '' AND start < %2))) OR (state = 2 AND (due >= %1 AND due < %2))");
const QString pastDayCondition =
    QStringLiteral("WHERE (state <> 1 AND state <> 3 AND (due >= %1 AND due < %2))");
const QString futureDayCondition = QStringLiteral(
    "WHERE (state = 0 AND ((due >= %1 AND due < %2) OR (due <> '' AND due >= %2 AND (start = '' OR start < "
    "%2)) OR (due = '' AND start < %2))) OR (state = 2 AND (due >= %1 AND due < %2))");

const QString activeTaskCountStatement =
    QStringLiteral("SELECT COUNT(id) FROM task WHERE state = 0 AND parent = ?");

// %1 is 1 to count folders and 0 to count projects; the seed row carries it too, and its timestamp of -1
// keeps it out of the count.
QString nestedCountStatement(int folder)
{
    return QStringLiteral(
               "WITH RECURSIVE subobjects(obj_id, folder, timestamp, state) AS ( VALUES(?, %1, -1, "
               "0) UNION SELECT project.id, project.folder, project.timestamp, project.state FROM "
               "project JOIN subobjects ON project.parent = subobjects.obj_id) SELECT COUNT(*) FROM "
               "subobjects WHERE subobjects.folder = %1 AND timestamp >= ? AND state <= ?")
        .arg(folder);
}

bool isDeleted(int state)
{
    return state == DELETED_OBJECT_STATE || state == COMPLETED_AND_DELETED_OBJECT_STATE;
}

QString idOf(const DataObject& object)
{
    return object.value(idKey).toString();
}

} // namespace

struct ProjectStore::Private
{
    ProjectStore* store = nullptr;
    DatabaseHandler* database = nullptr;

    bool cascadeToTasks(const DOProject& project, int state, QList<QVariantMap>* updatedObjects);
    bool cascadeToChildren(const DOFolder& folder, int state, QList<QVariantMap>* updatedObjects);
    // Clears the deleted bit and moves the object to the root when its parent row is gone.
    DataObject restoredCopy(const DataObject& object);
    QList<DataObject> selectLevelRows(const QString& condition, const QVariantList& values = {});
    int countWithNested(int folder, const QString& folderId, bool includeDeleted);
    bool hasCount(const QString& statement, const QString& id);
};

bool ProjectStore::Private::cascadeToTasks(const DOProject& project, int state,
                                           QList<QVariantMap>* updatedObjects)
{
    TaskStore* tasks = database->tasks();
    const QString projectId = idOf(project);
    const QList<DOTask> projectTasks =
        tasks->getProjectTasks(projectId) + tasks->getDeletedProjectTasks(projectId);
    if (!projectTasks.isEmpty()) {
        QLOG_INFO() << "Updating project tasks...";
    }

    // The server will never hear of a local project, so a task it already knows must leave it on deletion.
    const bool movesKnownTasks = project.value(localKey).toBool() && isDeleted(state);
    const QString oneStepActionsId = PredefinedDataHelper::instance()->oneStepActionsId();
    bool result = true;
    QList<QVariantMap> collected;
    for (DOTask task : projectTasks) {
        const int taskState = task.value(stateKey).toInt() | state;
        task.insert(stateKey, taskState);
        if (movesKnownTasks && !task.value(localKey).toBool())
            task.insert(parentKey, oneStepActionsId);
        // A repeating task in a completed project ends instead of rescheduling.
        if (taskState == COMPLETED_OBJECT_STATE && !task.value(periodKey).toString().isEmpty())
            task.insert(periodKey, QString());
        QVariantMap updated;
        result = tasks->updateTaskLocally(task, &updated) && result;
        collected.append(updated);
    }
    if (updatedObjects)
        updatedObjects->append(collected);
    return result;
}

bool ProjectStore::Private::cascadeToChildren(const DOFolder& folder, int state,
                                              QList<QVariantMap>* updatedObjects)
{
    bool result = true;
    for (DataObject child : store->getNestedObjects(idOf(folder))) {
        child.insert(stateKey, child.value(stateKey).toInt() | state);
        QList<QVariantMap> temporary;
        result = store->updateProjectLocally(child, updatedObjects ? updatedObjects : &temporary) && result;
        if (updatedObjects)
            updatedObjects->append(child);
    }
    return result;
}

DataObject ProjectStore::Private::restoredCopy(const DataObject& object)
{
    DataObject copy = object;
    copy.insert(stateKey, copy.value(stateKey).toInt() & ~DELETED_OBJECT_STATE);
    if (store->getProjectById(copy.value(parentKey).toString()).isEmpty())
        copy.insert(parentKey, QString());
    return copy;
}

QList<DataObject> ProjectStore::Private::selectLevelRows(const QString& condition, const QVariantList& values)
{
    return database->selectObjects(levelQuery + condition, values);
}

int ProjectStore::Private::countWithNested(int folder, const QString& folderId, bool includeDeleted)
{
    // With deleted rows the trash horizon applies to every row, active ones included.
    const uint horizon = includeDeleted ? StoreSettings::trashHorizon() : 0;
    const int highestState = includeDeleted ? COMPLETED_AND_DELETED_OBJECT_STATE : DEFAULT_OBJECT_STATE;
    return database->executeCountQuery(nestedCountStatement(folder), {folderId, horizon, highestState});
}

bool ProjectStore::Private::hasCount(const QString& statement, const QString& id)
{
    return database->executeCountQuery(statement, {id}) > 0;
}

ProjectStore::ProjectStore(DatabaseHandler* database, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->store = this;
    d->database = database;
}

ProjectStore::~ProjectStore() = default;

bool ProjectStore::createProjectLocally(const DataObject& project)
{
    QLOG_INFO() << "Creating a new project locally...\n" << idOf(project);
    if (!project.contains(nameKey)) {
        QLOG_WARN() << "Project does not contain the name!";
        return false;
    }
    DataObject copy = project;
    if (!copy.contains(folderKey))
        copy.insert(folderKey, false);
    DataObjectConverter::prepareDates(copy);
    return d->database->insertObject(copy, projectTable);
}

bool ProjectStore::createProjectRemotely(const QVariantMap& project)
{
    QLOG_INFO() << "Creating a new project remotely...\n" << idOf(project);
    if (!project.contains(nameKey)) {
        QLOG_WARN() << "Project does not contain the name!";
        return false;
    }
    DataObject copy = project;
    DataObjectConverter::prepareDates(copy);
    return d->database->insertObject(copy, projectTable);
}

bool ProjectStore::updateProjectLocally(const DataObject& project, QList<QVariantMap>* updatedObjects,
                                        QVariantMap* updatedProject)
{
    if (updatedProject) {
        QLOG_INFO() << "Updating the project when removing contexts..." << idOf(project);
    } else if (updatedObjects) {
        QLOG_INFO() << "Updating the project/folder(recursive call)..." << idOf(project);
    } else {
        QLOG_INFO() << "Updating the project/folder..." << idOf(project);
    }
    if (!project.contains(idKey) || !project.contains(nameKey)) {
        QLOG_WARN() << "Project/folder does not contain ID or NAME!";
        return false;
    }
    if (!updatedObjects && !updatedProject)
        d->database->beginTransaction();

    const int state = project.value(stateKey).toInt();
    // Removing a context changes the project alone; any other change of state carries down the tree.
    if (!updatedProject && state != DEFAULT_OBJECT_STATE) {
        const bool cascaded = project.value(folderKey).toBool()
                                  ? d->cascadeToChildren(project, state, updatedObjects)
                                  : d->cascadeToTasks(project, state, updatedObjects);
        if (!cascaded)
            return false;
    }

    DataObject row = project;
    row.remove(childrenKey);
    row.remove(levelKey);
    row.remove(localKey);
    DataObjectConverter::prepareDates(row);
    uint timestamp = 0;
    const bool updated = d->database->updateObject(row, projectTable, timestamp);
    const DataObject written = DataObjectConverter::asWritten(row, timestamp);
    if (updatedProject)
        *updatedProject = written;
    if (updatedObjects)
        updatedObjects->append(written);
    return updated;
}

bool ProjectStore::updateProjectRemotely(const QVariantMap& project)
{
    if (!project.contains(idKey) || !project.contains(nameKey)) {
        QLOG_WARN() << "Project/folder does not contain ID or NAME!";
        return false;
    }
    DataObject copy = project;
    DataObjectConverter::prepareDates(copy);
    uint timestamp = 0;
    if (!d->database->updateObject(copy, projectTable, timestamp))
        return false;
    return restoreParents(project);
}

bool ProjectStore::restoreParents(const DataObject& object)
{
    const int state = object.value(stateKey).toInt();
    if (state != DEFAULT_OBJECT_STATE)
        return true;

    const PredefinedDataHelper* predefined = PredefinedDataHelper::instance();
    const QString norvelBoxId = predefined->norvelBoxId();
    const QString oneStepActionsId = predefined->oneStepActionsId();
    bool result = true;
    QSet<QString> visited;
    QString id = object.value(parentKey).toString();
    // The visited set only guards against a damaged table whose parents form a loop.
    while (!id.isEmpty() && id != norvelBoxId && id != oneStepActionsId && !visited.contains(id)) {
        visited.insert(id);
        const DOProject parent = getProjectById(id);
        if (parent.isEmpty())
            break;
        if (isDeleted(parent.value(stateKey).toInt())) {
            QLOG_INFO() << "Trying to restore parent's state...";
            // The change came from the server, so it is neither stamped nor marked to be sent back.
            result =
                d->database->executeQuery(
                    QStringLiteral("UPDATE %1 SET state = ? WHERE id = ?").arg(projectTable), {state, id}) &&
                result;
        }
        id = parent.value(parentKey).toString();
    }
    return result;
}

bool ProjectStore::restoreProject(const DOProject& project)
{
    const DOProject copy = d->restoredCopy(project);
    if (!updateProjectLocally(copy))
        return false;
    bool result = true;
    TaskStore* tasks = d->database->tasks();
    for (const DOTask& task : tasks->getDeletedProjectTasks(idOf(copy)))
        result = tasks->restoreTask(task) && result;
    return result;
}

bool ProjectStore::restoreFolder(const DOFolder& folder)
{
    if (!folder.value(folderKey).toBool())
        return false;
    const DOFolder copy = d->restoredCopy(folder);
    if (!updateProjectLocally(copy))
        return false;
    bool result = true;
    for (const DOFolder& subfolder : getDeletedSubfolders(idOf(copy)))
        result = restoreFolder(subfolder) && result;
    for (const DOProject& subproject : getDeletedSubprojects(idOf(copy)))
        result = restoreProject(subproject) && result;
    return result;
}

bool ProjectStore::updatePredefinedFolder(const QString& oldId, const QString& newId)
{
    QLOG_INFO() << "Updating  predefined folder... Old ID: " << oldId << "   New ID: " << newId;
    const uint now = DataObjectConverter::currentTimestamp();
    return d->database->executeQuery(
               QStringLiteral("UPDATE project SET id = ?, local = 0, synced = 1, timestamp = ? WHERE id = ?"),
               {newId, now, oldId}) &&
           d->database->executeQuery(
               QStringLiteral("UPDATE project SET parent = ?, synced = 0, timestamp = ? WHERE parent = ?"),
               {newId, now, oldId});
}

DOProject ProjectStore::getProjectById(const QString& id)
{
    return d->database->selectObject(projectColumns + QStringLiteral("WHERE id = ?"), {id});
}

QList<DataObject> ProjectStore::getNestedObjects(const QString& folderId)
{
    return d->database->selectObjects(
        projectColumns + QStringLiteral("WHERE (state = 0 OR state = 2) AND parent = ?"), {folderId});
}

QList<DOFolder> ProjectStore::getDeletedSubfolders(const QString& folderId)
{
    return d->database->selectObjects(
        QStringLiteral("SELECT id, name, parent, memo, context, folder, timestamp, state, synced, local FROM "
                       "project WHERE folder = 1 AND state = 1 AND parent = ? AND timestamp >= ?"),
        {folderId, StoreSettings::trashHorizon()});
}

QList<DOProject> ProjectStore::getDeletedSubprojects(const QString& folderId)
{
    return d->database->selectObjects(
        projectColumns +
            QStringLiteral("WHERE folder = 0 AND (state = 1 OR state = 3) AND parent = ? AND timestamp >= ?"),
        {folderId, StoreSettings::trashHorizon()});
}

QList<DOProject> ProjectStore::getAllActiveProjects()
{
    return d->database->selectObjects(projectColumns + QStringLiteral("WHERE folder = 0 AND state = 0"));
}

QList<DOFolder> ProjectStore::getAllFolders()
{
    return d->database->selectObjects(projectColumns + QStringLiteral("WHERE folder = 1 AND state = 0"));
}

QList<DOProject> ProjectStore::getDeletedProjects()
{
    return d->database->selectObjects(
        projectColumns + QStringLiteral("WHERE (state = 1 OR state = 3) AND folder = 0 AND timestamp >= ?"),
        {StoreSettings::trashHorizon()});
}

QList<DOProject> ProjectStore::getProjectsToUpdate()
{
    return d->database->selectObjects(
        projectColumns +
        QStringLiteral("WHERE folder = 0 AND synced = 0 AND (state = 0 OR (state = 2 AND local = 1))"));
}

QList<DOProject> ProjectStore::getProjectsToDeleteOrComplete()
{
    return d->database->selectObjects(
        projectColumns + QStringLiteral("WHERE folder = 0 AND synced = 0 AND local = 0 AND state <> 0"));
}

QList<DataObject> ProjectStore::getRootProjects()
{
    return d->selectLevelRows(QStringLiteral("WHERE (state = 0 OR state = 2) AND level = 0"));
}

TreeHierarchy ProjectStore::getProjectTree()
{
    return TreeHierarchyBuilder::build(
        d->selectLevelRows(QStringLiteral("WHERE state = 0 ORDER BY level, parent")));
}

QList<DOFolder> ProjectStore::getDeletedFolders()
{
    return d->selectLevelRows(QStringLiteral("WHERE state = 1 AND folder = 1 AND timestamp >= ?"),
                              {StoreSettings::trashHorizon()});
}

QList<DOFolder> ProjectStore::getFoldersToUpdate()
{
    // Parents first, so the server knows a folder before its children arrive.
    return d->selectLevelRows(
        QStringLiteral("WHERE folder = 1 AND synced = 0 AND state <> 1 ORDER BY level ASC"));
}

QList<DOFolder> ProjectStore::getFoldersToDelete()
{
    return d->selectLevelRows(
        QStringLiteral("WHERE folder = 1 AND synced = 0 AND local = 0 AND state = 1 ORDER BY level DESC"));
}

QList<DataObject> ProjectStore::getSubprojectsRecursive(const QString& folderId)
{
    // The seed row, with the folder's id and empty texts, comes back as part of the result.
    return d->database->selectObjects(
        QStringLiteral(
            "WITH RECURSIVE subobjects(obj_id, name, memo, parent, start, due, context, timestamp, folder, "
            "state, "
            "synced, local) AS ( VALUES(?, '', '', '', '', '', '', 0, 1, 1, 0, 0) UNION SELECT project.id, "
            "project.name, project.memo, project.parent, project.start, project.due, project.context, "
            "project.timestamp, project.folder, project.state, project.synced, project.local FROM project "
            "JOIN "
            "subobjects ON project.parent = subobjects.obj_id) SELECT obj_id AS id, name, memo, parent, "
            "start, "
            "due, context, timestamp, folder, state, synced, local FROM subobjects"),
        {folderId});
}

QStringList ProjectStore::getProjectNameChain(const QString& projectId)
{
    return d->database->selectFirstColumn(
        QStringLiteral(
            "WITH RECURSIVE tree_level(obj_id, parent, level, name) AS ( SELECT id, parent, 0, name "
            "FROM project WHERE id = ? UNION SELECT project.id, project.parent, tree_level.level + 1, "
            "project.name FROM project JOIN tree_level ON project.id = tree_level.parent) SELECT name "
            "FROM tree_level ORDER BY level DESC"),
        {projectId});
}

int ProjectStore::getNestedFolderCount(const QString& folderId, bool includeDeleted)
{
    return d->countWithNested(1, folderId, includeDeleted);
}

int ProjectStore::getNestedProjectCount(const QString& folderId, bool includeDeleted)
{
    return d->countWithNested(0, folderId, includeDeleted);
}

bool ProjectStore::hasDeletedProjects()
{
    return d->database->executeCountQuery(
               QStringLiteral(
                   "SELECT COUNT(id) FROM project WHERE (state = 1 OR state = 3) AND folder = 0 AND "
                   "timestamp >= ?"),
               {StoreSettings::trashHorizon()}) > 0;
}

bool ProjectStore::hasDeletedFolders()
{
    return d->database->executeCountQuery(
               QStringLiteral(
                   "SELECT COUNT(id) FROM project WHERE state = 1 AND folder = 1 AND timestamp >= ?"),
               {StoreSettings::trashHorizon()}) > 0;
}

int ProjectStore::getProjectCount()
{
    return d->database->executeListCountQuery(
        QStringLiteral(
            "SELECT COUNT(project.id) FROM project WHERE project.id NOT IN (%1) AND project.folder <> 1"),
        StoreSettings::predefinedIds());
}

int ProjectStore::getProjectTaskCount(const QString& projectId)
{
    const PredefinedDataHelper* predefined = PredefinedDataHelper::instance();
    if (projectId == predefined->oneStepActionsId() || projectId == predefined->norvelBoxId())
        return d->database->executeCountQuery(activeTaskCountStatement, {projectId});

    const DOProject project = getProjectById(projectId);
    if (project.isEmpty())
        return 0;
    // A project in the trash shows how many tasks it will bring back.
    if (isDeleted(project.value(stateKey).toInt()))
        return d->database->executeCountQuery(QStringLiteral("SELECT COUNT(id) FROM task WHERE parent = ?"),
                                              {projectId});
    return d->database->executeCountQuery(activeTaskCountStatement, {projectId});
}

bool ProjectStore::projectHasTasks(const DOProject& project)
{
    return d->hasCount(
        QStringLiteral("SELECT COUNT(id) FROM task WHERE parent = ? AND (state == 0 OR state == 2)"),
        idOf(project));
}

bool ProjectStore::projectHasActiveTasks(const DOProject& project)
{
    return d->hasCount(QStringLiteral("SELECT COUNT(id) FROM task WHERE parent = ? AND state == 0"),
                       idOf(project));
}

bool ProjectStore::folderHasActiveObjects(const DOFolder& folder)
{
    return d->hasCount(
        QStringLiteral("SELECT COUNT(id) FROM project WHERE parent = ? AND (state == 0 OR state == 2)"),
        idOf(folder));
}

QList<DOProject> ProjectStore::getDayProjects(const QDate& date)
{
    if (!date.isValid())
        return {};
    const DayQuery day(date);
    const DayQuery::Statement statement =
        day.bind(dayProjectColumns + day.condition(todayCondition, pastDayCondition, futureDayCondition));
    return d->database->selectObjects(statement.text, statement.values);
}

#include "contextstore.h"

#include "core/logmanager.h"
#include "store/databasehandler.h"
#include "store/dataobjectconverter.h"
#include "store/objectkeys.h"
#include "store/projectstore.h"
#include "store/storesettings.h"
#include "store/taskstore.h"
#include "store/treehierarchybuilder.h"

#include <QSet>
#include <QSqlRecord>

namespace {
const QString contextTable = QStringLiteral("context");

const QString contextColumnsQuery =
    QStringLiteral("SELECT id, name, parent, memo, timestamp, state, synced, local FROM context ");

// Every level query is this one text with its condition appended.
const QString levelQuery = QStringLiteral(
    "SELECT id, name, parent, memo, timestamp, state, synced, local, (WITH RECURSIVE tree_level(obj_id, "
    "parent, level) AS ( SELECT id, parent, 0 FROM context WHERE id = ctx.id UNION SELECT context.id, "
    "context.parent, tree_level.level + 1 FROM context JOIN tree_level ON context.id = tree_level.parent) "
    "SELECT MAX(level) FROM tree_level) AS level FROM context ctx ");

const QString contextProjectsQuery =
    QStringLiteral("SELECT id, name, parent, memo, timestamp, state, synced, local, context, folder, start, "
                   "due FROM project WHERE context = ? AND (state = 0 OR state = 2)");

// A first row carrying the given id lets the recursion start from a context without reading it.
const QString subcontextsRecursion =
    QStringLiteral("WITH RECURSIVE subcontexts(obj_id, state) AS ( VALUES(?, 0) UNION SELECT context.id, "
                   "context.state FROM context JOIN subcontexts ON context.parent = subcontexts.obj_id) ");

bool hasIdAndName(const DataObject& context)
{
    if (context.contains(idKey) && context.contains(nameKey))
        return true;
    QLOG_WARN() << "Context does not contain ID or NAME!";
    return false;
}

bool isDeletedContext(const DataObject& context)
{
    return context.value(stateKey).toInt() == DELETED_OBJECT_STATE;
}
} // namespace

struct ContextStore::Private
{
    explicit Private(ContextStore* store, DatabaseHandler* database)
        : q(store)
        , database(database)
    {}

    ContextStore* q;
    DatabaseHandler* database;

    bool createContext(const DOContext& context);
    QList<DOContext> selectContexts(const QString& condition, const QVariantList& values = {});
    QList<DOContext> selectLeveledContexts(const QString& condition, const QVariantList& values = {});

    // Takes a deleted context out of every task and project that carries it, and deletes its active
    // subcontexts. Tasks and projects themselves stay where they are.
    bool cascadeDeletion(const QString& contextId, QList<DataObject>* updatedObjects);
    bool detachTasks(const QString& contextId, QList<DataObject>* updatedObjects);
    bool detachProjects(const QString& contextId, QList<DataObject>* updatedObjects);
    bool deleteSubcontexts(const QString& contextId, QList<DataObject>* updatedObjects);
    // Clears the context from the rows of the table in every state, the deleted ones included.
    bool runDetachStatement(const QString& table, const QString& contextId);

    // A context that arrives active brings its deleted ancestors back, the way the server has them.
    bool restoreAncestors(const DOContext& context);
};

ContextStore::ContextStore(DatabaseHandler* database, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this, database))
{}

ContextStore::~ContextStore() = default;

bool ContextStore::Private::createContext(const DOContext& context)
{
    if (!context.contains(nameKey)) {
        QLOG_WARN() << "Context does not contain NAME!";
        return false;
    }
    return database->insertObject(context, contextTable);
}

bool ContextStore::createContextLocally(const DOContext& context)
{
    QLOG_INFO() << "Creating a new context locally...\n" << context.value(idKey).toString();
    return d->createContext(context);
}

bool ContextStore::createContextRemotely(const QVariantMap& context)
{
    QLOG_INFO() << "Creating a new context remotely...\n" << context.value(idKey).toString();
    return d->createContext(context);
}

bool ContextStore::updateContextLocally(const DOContext& context, QList<DataObject>* updatedObjects)
{
    const QString id = context.value(idKey).toString();
    QLOG_INFO() << (updatedObjects ? "Updating the context(recursive call)..."
                                   : "Updating the context locally...")
                << id;
    if (!hasIdAndName(context))
        return false;
    if (!updatedObjects)
        d->database->beginTransaction();
    if (isDeletedContext(context) && !d->cascadeDeletion(id, updatedObjects))
        return false;

    DOContext copy = context;
    copy.remove(childrenKey);
    copy.remove(levelKey);
    copy.remove(localKey);
    uint timestamp = 0;
    const bool updated = d->database->updateObject(copy, contextTable, timestamp);
    if (updatedObjects)
        updatedObjects->append(DataObjectConverter::asWritten(copy, timestamp));
    return updated;
}

bool ContextStore::updateContextRemotely(const QVariantMap& context)
{
    if (!hasIdAndName(context))
        return false;
    uint timestamp = 0;
    bool result = d->database->updateObject(context, contextTable, timestamp);
    if (result)
        result = d->restoreAncestors(context);
    if (isDeletedContext(context))
        result = d->cascadeDeletion(context.value(idKey).toString(), nullptr) && result;
    return result;
}

bool ContextStore::Private::cascadeDeletion(const QString& contextId, QList<DataObject>* updatedObjects)
{
    bool result = detachTasks(contextId, updatedObjects);
    result = runDetachStatement(QStringLiteral("task"), contextId) && result;
    result = detachProjects(contextId, updatedObjects) && result;
    result = runDetachStatement(QStringLiteral("project"), contextId) && result;
    result = deleteSubcontexts(contextId, updatedObjects) && result;
    return result;
}

bool ContextStore::Private::detachTasks(const QString& contextId, QList<DataObject>* updatedObjects)
{
    bool result = true;
    for (DOTask task : database->tasks()->getContextTasks(contextId)) {
        task.insert(contextKey, QString());
        QVariantMap updated;
        result = database->tasks()->updateTaskLocally(task, &updated) && result;
        if (updatedObjects)
            updatedObjects->append(updated);
    }
    return result;
}

bool ContextStore::Private::detachProjects(const QString& contextId, QList<DataObject>* updatedObjects)
{
    bool result = true;
    for (DOProject project : q->getContextProjects(contextId)) {
        project.insert(contextKey, QString());
        QVariantMap updated;
        result = database->projects()->updateProjectLocally(project, nullptr, &updated) && result;
        if (updatedObjects)
            updatedObjects->append(updated);
    }
    return result;
}

bool ContextStore::Private::deleteSubcontexts(const QString& contextId, QList<DataObject>* updatedObjects)
{
    QList<DataObject> collected;
    QList<DataObject>* list = updatedObjects ? updatedObjects : &collected;
    bool result = true;
    for (DOContext child : q->getNestedContexts(contextId)) {
        child.insert(stateKey, DELETED_OBJECT_STATE);
        result = q->updateContextLocally(child, list) && result;
        if (updatedObjects)
            updatedObjects->append(child);
    }
    return result;
}

bool ContextStore::Private::runDetachStatement(const QString& table, const QString& contextId)
{
    const QString statement =
        QStringLiteral("UPDATE %1 SET context = '', synced = 0, timestamp = ? WHERE context = ?").arg(table);
    return database->executeQuery(statement, {DataObjectConverter::currentTimestamp(), contextId});
}

bool ContextStore::Private::restoreAncestors(const DOContext& context)
{
    const int state = context.value(stateKey).toInt();
    if (state != DEFAULT_OBJECT_STATE)
        return true;
    bool result = true;
    // Parents that loop back on themselves arrive only in damaged data; the walk must still end.
    QSet<QString> visited;
    QString id = context.value(parentKey).toString();
    while (!id.isEmpty() && !visited.contains(id)) {
        visited.insert(id);
        const DOContext ancestor = q->getContextById(id);
        if (ancestor.isEmpty())
            break;
        if (isDeletedContext(ancestor)) {
            QLOG_INFO() << "Trying to restore context's state...";
            result = database->executeQuery(QStringLiteral("UPDATE context SET state = ? WHERE id = ?"),
                                            {state, id}) &&
                     result;
        }
        id = ancestor.value(parentKey).toString();
    }
    return result;
}

bool ContextStore::restoreContext(const DOContext& context)
{
    DOContext copy = context;
    copy.insert(stateKey, copy.value(stateKey).toInt() & ~DELETED_OBJECT_STATE);
    if (getContextById(copy.value(parentKey).toString()).isEmpty())
        copy.insert(parentKey, QString());
    if (!updateContextLocally(copy))
        return false;
    bool result = true;
    for (const DOContext& child : getDeletedSubcontexts(copy.value(idKey).toString()))
        result = restoreContext(child) && result;
    return result;
}

bool ContextStore::updatePredefinedContext(const QString& oldId, const QString& newId, bool isDeleted)
{
    QLOG_INFO() << "Updating  predefined context... Old ID: " << oldId << "   New ID: " << newId;
    const uint now = DataObjectConverter::currentTimestamp();
    const QString contextOfObjects = isDeleted ? QString() : newId;
    return d->database->executeQuery(
               QStringLiteral("UPDATE context SET id = ?, local = 0, synced = 1, timestamp = ? WHERE id = ?"),
               {newId, now, oldId}) &&
           d->database->executeQuery(
               QStringLiteral("UPDATE context SET parent = ?, synced = 0, timestamp = ? WHERE parent = ?"),
               {newId, now, oldId}) &&
           d->database->executeQuery(
               QStringLiteral("UPDATE task SET context = ?, synced = 0, timestamp = ? WHERE context = ?"),
               {contextOfObjects, now, oldId}) &&
           d->database->executeQuery(
               QStringLiteral("UPDATE project SET context = ?, synced = 0, timestamp = ? WHERE context = ?"),
               {contextOfObjects, now, oldId});
}

QList<DOContext> ContextStore::Private::selectContexts(const QString& condition, const QVariantList& values)
{
    return database->selectObjects(contextColumnsQuery + condition, values);
}

QList<DOContext> ContextStore::Private::selectLeveledContexts(const QString& condition,
                                                              const QVariantList& values)
{
    return database->selectObjects(levelQuery + condition, values);
}

QList<DOContext> ContextStore::getAllContexts()
{
    return d->selectContexts(QStringLiteral("WHERE state = 0"));
}

DOContext ContextStore::getContextById(const QString& id)
{
    return d->database->selectObject(contextColumnsQuery + QStringLiteral("WHERE id = ?"), {id});
}

QList<DOContext> ContextStore::getNestedContexts(const QString& contextId)
{
    return d->selectContexts(QStringLiteral("WHERE state = 0 AND parent = ?"), {contextId});
}

QList<DOContext> ContextStore::getDeletedSubcontexts(const QString& contextId)
{
    return d->selectContexts(QStringLiteral("WHERE state = 1 AND parent = ? AND timestamp >= ?"),
                             {contextId, StoreSettings::trashHorizon()});
}

QList<DOContext> ContextStore::getRootContexts()
{
    return d->selectLeveledContexts(QStringLiteral("WHERE state = 0 AND level = 0"));
}

TreeHierarchy ContextStore::getContextTree()
{
    return TreeHierarchyBuilder::build(
        d->selectLeveledContexts(QStringLiteral("WHERE state = 0 ORDER BY level, parent")));
}

QList<DOContext> ContextStore::getDeletedContexts()
{
    return d->selectLeveledContexts(QStringLiteral("WHERE state = 1 AND timestamp >= ?"),
                                    {StoreSettings::trashHorizon()});
}

QList<DOContext> ContextStore::getContextsToUpdate()
{
    return d->selectLeveledContexts(QStringLiteral("WHERE synced = 0 AND state = 0 ORDER BY level ASC"));
}

QList<DOContext> ContextStore::getContextsToDelete()
{
    return d->selectLeveledContexts(
        QStringLiteral("WHERE synced = 0 AND local = 0 AND state = 1 ORDER BY level DESC"));
}

QList<DataObject> ContextStore::getContextChildren(const QString& contextId)
{
    return getNestedContexts(contextId) + getContextProjects(contextId) +
           d->database->tasks()->getContextTasks(contextId);
}

QList<DOProject> ContextStore::getContextProjects(const QString& contextId)
{
    return d->database->selectObjects(contextProjectsQuery, {contextId});
}

QList<DataObject> ContextStore::getAllObjects()
{
    QLOG_INFO() << "Getting all objects from database...";
    const QList<DataObject> tasks = d->database->selectObjects(
        QStringLiteral("SELECT id, name, parent, memo, start, due, context, timestamp, state, synced, local, "
                       "period FROM task WHERE (state = 0 OR state = 2)"));
    const QList<DataObject> projects = d->database->selectObjects(
        QStringLiteral("SELECT id, name, parent, memo, timestamp, state, synced, local, context, folder, "
                       "start, due FROM project WHERE (state = 0 OR state = 2)"));
    return tasks + projects + getAllContexts();
}

QList<DOContext> ContextStore::getSubcontextsRecursive(const QString& contextId)
{
    return d->database->selectObjects(
        QStringLiteral(
            "WITH RECURSIVE subcontexts(obj_id, name, memo, parent, timestamp, state, synced, local) AS ( "
            "VALUES(?, '', '', '', 0, 1, 0, 0) UNION SELECT context.id, context.name, context.memo, "
            "context.parent, context.timestamp, context.state, context.synced, context.local FROM context "
            "JOIN subcontexts ON context.parent = subcontexts.obj_id) SELECT obj_id AS id, name, memo, "
            "parent, timestamp, state, synced, local FROM subcontexts"),
        {contextId});
}

QStringList ContextStore::getContextNameChain(const QString& contextId)
{
    return d->database->selectFirstColumn(
        QStringLiteral(
            "WITH RECURSIVE tree_level(obj_id, parent, level, name) AS ( SELECT id, parent, 0, name "
            "FROM context WHERE id = ? UNION SELECT context.id, context.parent, tree_level.level + "
            "1, context.name FROM context JOIN tree_level ON context.id = tree_level.parent) "
            "SELECT name FROM tree_level ORDER BY level DESC"),
        {contextId});
}

int ContextStore::getContextProjectCount(const QString& contextId)
{
    return d->database->executeCountQuery(
        QStringLiteral("SELECT COUNT(id) FROM project WHERE state = 0 AND context = ?"), {contextId});
}

int ContextStore::getNestedContextCount(const QString& contextId, bool includeAllStates)
{
    // The first row's timestamp of -1 keeps the context itself out of the count.
    const QVariant horizon = includeAllStates ? StoreSettings::trashHorizon() : 0u;
    const int highestState = includeAllStates ? COMPLETED_AND_DELETED_OBJECT_STATE : DEFAULT_OBJECT_STATE;
    return d->database->executeCountQuery(
        QStringLiteral("WITH RECURSIVE subcontexts(obj_id, timestamp, state) AS ( VALUES(?, -1, 0) UNION "
                       "SELECT context.id, context.timestamp, context.state FROM context JOIN subcontexts "
                       "ON context.parent = subcontexts.obj_id) SELECT COUNT(*) FROM subcontexts WHERE "
                       "timestamp >= ? AND state <= ?"),
        {contextId, horizon, highestState});
}

int ContextStore::getContextTaskCountRecursive(const QString& contextId)
{
    return d->database->executeCountQuery(
        subcontextsRecursion + QStringLiteral("SELECT COUNT(*) FROM task JOIN subcontexts ON task.context = "
                                              "subcontexts.obj_id WHERE task.state = 0"),
        {contextId});
}

int ContextStore::getContextProjectCountRecursive(const QString& contextId)
{
    return d->database->executeCountQuery(
        subcontextsRecursion + QStringLiteral("SELECT COUNT(*) FROM project JOIN subcontexts ON "
                                              "project.context = subcontexts.obj_id WHERE project.state = 0"),
        {contextId});
}

bool ContextStore::hasDeletedContexts()
{
    return d->database->executeCountQuery(
               QStringLiteral("SELECT COUNT(id) FROM context WHERE state = 1 AND timestamp >= ?"),
               {StoreSettings::trashHorizon()}) > 0;
}

int ContextStore::getContextCount()
{
    return d->database->executeListCountQuery(
        QStringLiteral("SELECT COUNT(context.id) FROM context WHERE context.id NOT IN (%1)"),
        StoreSettings::predefinedIds());
}

bool ContextStore::contextHasActiveObjects(const DOContext& context)
{
    const QVariantList id{context.value(idKey).toString()};
    return d->database->executeCountQuery(
               QStringLiteral("SELECT COUNT(id) FROM context WHERE parent = ? AND state == 0"), id) > 0 ||
           d->database->executeCountQuery(
               QStringLiteral(
                   "SELECT COUNT(id) FROM project WHERE context = ? AND (state == 0 OR state == 2)"),
               id) > 0 ||
           d->database->executeCountQuery(
               QStringLiteral("SELECT COUNT(id) FROM task WHERE context = ? AND (state == 0 OR state == 2)"),
               id) > 0;
}

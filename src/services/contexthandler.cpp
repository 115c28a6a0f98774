#include "contexthandler.h"

#include "core/logmanager.h"
#include "models/contexttasksortmodel.h"
#include "models/contexttreesortmodel.h"
#include "models/listmodel.h"
#include "models/rootcontextslistmodel.h"
#include "models/searchsortfiltermodel.h"
#include "models/sortmodel.h"
#include "models/treemodel.h"
#include "store/datamanager.h"
#include "store/objectkeys.h"

using namespace SortingNamespace;

namespace {

DataManager* data()
{
    return DataManager::instance();
}

// In a context's mixed list of children, tasks carry PERIOD and projects CONTEXT; contexts carry neither.
bool isContext(const DataObject& object)
{
    return !object.contains(periodKey) && !object.contains(contextKey);
}

QVariant handOut(SortModel* sortModel, ListModel::DataFunction dataFunction)
{
    sortModel->setSourceModel(new ListModel(std::move(dataFunction)));
    return QVariant::fromValue(sortModel);
}
} // namespace

struct ContextHandler::Private
{
    // Closes the root list; ENABLED false marks it as a row that cannot be edited.
    const QVariantMap noContextObject = {{idKey, QString()},
                                         {QStringLiteral("NAME"), QStringLiteral("No context")},
                                         {QStringLiteral("LEVEL"), 0},
                                         {QStringLiteral("ENABLED"), false}};

    // Favorites belong to the favorites manager, which is not part of the program yet: until it is,
    // nothing is a favorite, and adding or removing one keeps nothing.
    static void addFavorite(const QString& /*contextId*/) {}
    static void removeFavorite(const QString& /*contextId*/) {}
    static bool isFavorite(const QString& /*contextId*/) { return false; }
    static QStringList favoriteIds() { return {}; }
};

ContextHandler::ContextHandler(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{}

ContextHandler::~ContextHandler() = default;

int ContextHandler::getNestedContextCount(const QString& contextId, bool indcludeAllStates)
{
    return data()->getNestedContextCount(contextId, indcludeAllStates);
}

QVariantList ContextHandler::getContextNameChain(const QString& contextId)
{
    if (contextId.isEmpty())
        return {};
    QVariantList chain;
    for (const QString& name : data()->getContextNameChain(contextId))
        chain.append(name);
    return chain;
}

QVariant ContextHandler::getContextById(const QString& id)
{
    return data()->getContextById(id);
}

QString ContextHandler::lastCreatedContextId()
{
    return data()->lastCreatedObjectId();
}

int ContextHandler::getContextCount()
{
    return data()->getContextCount();
}

bool ContextHandler::hasDeletedContexts()
{
    return data()->hasDeletedContexts();
}

int ContextHandler::getContextTaskCount(const QString& contextId)
{
    return data()->getContextTaskCount(contextId);
}

int ContextHandler::getContextProjectCount(const QString& contextId)
{
    return data()->getContextProjectCount(contextId);
}

int ContextHandler::getContextTaskCountRecursive(const QString& contextId)
{
    return data()->getContextTaskCountRecursive(contextId);
}

int ContextHandler::getContextProjectCountRecursive(const QString& contextId)
{
    return data()->getContextProjectCountRecursive(contextId);
}

QVariant ContextHandler::getContextTreeModel(const QString& filteredObjectId)
{
    auto* sortModel = new ContextTreeSortModel;
    sortModel->setFilteredObjectId(filteredObjectId);
    sortModel->setSourceModel(new TreeModel([this] {
        TreeHierarchy tree = data()->getContextTree();
        tree.rootObjects << d->noContextObject;
        return tree;
    }));
    return QVariant::fromValue(sortModel);
}

QVariant ContextHandler::getAllContextsSearchModel()
{
    return handOut(new SearchSortFilterModel(true), [] { return data()->getAllContexts(); });
}

QVariant ContextHandler::getRootContextListModel()
{
    auto* sortModel = new RootContextsListModel;
    sortModel->setModelType(ListTypeContext, QStringLiteral("root_contexts"));
    return handOut(sortModel, [this] { return data()->getRootContexts() << d->noContextObject; });
}

QVariant ContextHandler::getContextChildren(const QString& id)
{
    auto* sortModel = new ContextTaskSortModel;
    sortModel->setExcludeCompletedObjectsType(SortModel::ExcludeCompletedTasks);
    sortModel->setModelType(ListTypeContext, id);
    return handOut(sortModel, [id] { return data()->getContextChildren(id); });
}

QVariant ContextHandler::getDeletedContexts()
{
    return handOut(new SortModel, [] { return data()->getDeletedContexts(); });
}

bool ContextHandler::createContext(const QVariantMap& context)
{
    return commitAndAnnounceAdded(data()->createContextLocally(context), context);
}

bool ContextHandler::updateContext(const QVariantMap& context)
{
    return commitAndAnnounceUpdated(data()->updateContextLocally(context), context);
}

bool ContextHandler::restoreContext(const QVariantMap& context)
{
    return commitAndAnnounceUpdated(data()->restoreContext(context), context);
}

bool ContextHandler::cloneContext(const QVariantMap& context)
{
    const QString oldId = context.value(idKey).toString();
    if (oldId.isEmpty())
        return false;
    DOContext copy = context;
    copy.remove(idKey);
    if (!commitAndAnnounceAdded(data()->createContextLocally(copy), copy))
        return false;
    const QString newId = data()->lastCreatedObjectId();
    if (newId.isEmpty())
        return false;
    copySortingSettings(oldId, newId);
    for (DataObject child : data()->getContextChildren(oldId)) {
        if (!isContext(child))
            continue;
        child.insert(parentKey, newId);
        child.remove(syncedKey);
        child.remove(localKey);
        cloneContext(child);
    }
    return true;
}

bool ContextHandler::moveContext(const QVariantMap& context, const QString& newParent,
                                 const QVariantMap& childrenInfo)
{
    const QString id = context.value(idKey).toString();
    if (id.isEmpty())
        return false;
    DOContext moved = context;
    moved.insert(parentKey, newParent);
    commitAndAnnounceUpdated(data()->updateContextLocally(moved), moved);
    restoreCutSubcontexts(id, childrenInfo);
    restoreCutTaskContexts(childrenInfo);
    return false;
}

bool ContextHandler::markContextAsDeleted(const QVariantMap& context, bool emitUpdateSignal)
{
    // The store empties CONTEXT on the context's tasks and projects and deletes its nested contexts.
    DOContext deleted = context;
    deleted.insert(stateKey, DELETED_OBJECT_STATE);
    const bool updated = data()->updateContextLocally(deleted);
    if (emitUpdateSignal && updated) {
        emit contextUpdated(deleted);
        data()->startSyncDelayed();
    }
    return updated;
}

bool ContextHandler::confirmContextUpdate(const QVariantMap& context)
{
    const QString id = context.value(idKey).toString();
    // The subtree holds the context itself too.
    const QList<DOContext> subtree = data()->getSubcontextsRecursive(id);
    if (!data()->commitChanges())
        return false;
    if (data()->getContextById(id).value(stateKey).toInt() == DELETED_OBJECT_STATE) {
        for (const DOContext& object : subtree) {
            const QString objectId = object.value(idKey).toString();
            if (Private::isFavorite(objectId))
                Private::removeFavorite(objectId);
        }
    }
    // Unlike tasks and projects, no update is announced: the mark already did.
    return true;
}

void ContextHandler::revertContextState(const QVariantMap& context, bool emitUpdateSignal)
{
    QLOG_INFO() << "Reverting context's state...\n" << context.value(idKey).toString();
    data()->rollbackChanges();
    data()->cancelDelayedSync();
    if (emitUpdateSignal)
        emit contextUpdated(context);
}

void ContextHandler::addToFavorites(const QVariantMap& context)
{
    Private::addFavorite(context.value(idKey).toString());
}

void ContextHandler::removeFromFavorites(const QVariantMap& context)
{
    Private::removeFavorite(context.value(idKey).toString());
}

bool ContextHandler::inFavorites(const QVariantMap& context)
{
    return Private::isFavorite(context.value(idKey).toString());
}

int ContextHandler::contextCountInFavorites()
{
    int count = 0;
    for (const QString& id : Private::favoriteIds()) {
        const DOContext stored = data()->getContextById(id);
        if (!stored.isEmpty() && stored.value(stateKey).toInt() == DEFAULT_OBJECT_STATE)
            ++count;
    }
    return count;
}

bool ContextHandler::commitAndAnnounceAdded(bool stored, const QVariantMap& context)
{
    const bool committed = data()->commitChanges();
    if (!stored || !committed)
        return false;
    emit contextAdded(context);
    data()->startSyncDelayed();
    return true;
}

bool ContextHandler::commitAndAnnounceUpdated(bool stored, const QVariantMap& context)
{
    const bool committed = data()->commitChanges();
    if (!stored || !committed)
        return false;
    emit contextUpdated(context);
    data()->startSyncDelayed();
    return true;
}

void ContextHandler::copySortingSettings(const QString& oldId, const QString& newId)
{
    if (!data()->hasSortedListInfo(oldId, ListTypeContext))
        return;
    // The manual order stays behind: it names the original's children, not the copies.
    const SortedListInfo info = data()->getSortedListInfo(oldId, ListTypeContext);
    data()->setSortedList(newId, ListTypeContext, info.sortingType, info.groupByDate);
}

void ContextHandler::restoreCutSubcontexts(const QString& contextId, const QVariantMap& childrenInfo)
{
    for (DOContext subcontext : data()->getSubcontextsRecursive(contextId)) {
        const QString subcontextId = subcontext.value(idKey).toString();
        // The subtree query yields a blank row for the context itself, which was moved already.
        if (subcontextId == contextId || !childrenInfo.contains(subcontextId))
            continue;
        subcontext.insert(stateKey, childrenInfo.value(subcontextId));
        commitAndAnnounceUpdated(data()->updateContextLocally(subcontext), subcontext);
    }
}

void ContextHandler::restoreCutTaskContexts(const QVariantMap& childrenInfo)
{
    // Deleting the context emptied its tasks' CONTEXT; childrenInfo remembers what it was. Not committed.
    for (auto it = childrenInfo.cbegin(); it != childrenInfo.cend(); ++it) {
        DOTask task = data()->getTaskById(it.key());
        if (task.isEmpty())
            continue;
        task.insert(contextKey, it.value());
        data()->updateTaskLocally(task);
    }
}

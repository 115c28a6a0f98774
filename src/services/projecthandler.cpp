#include "projecthandler.h"

#include "core/logmanager.h"
#include "models/foldertreemodel.h"
#include "models/foldertreesortmodel.h"
#include "models/listmodel.h"
#include "models/projectfoldersortmodel.h"
#include "models/projecttreesortmodel.h"
#include "models/searchsortfiltermodel.h"
#include "models/sortmodel.h"
#include "store/datamanager.h"
#include "store/objectkeys.h"
#include "store/predefineddatahelper.h"

using namespace SortingNamespace;

namespace {

DataManager* data()
{
    return DataManager::instance();
}

QVariantMap pseudoObject(const QString& id, const QString& name, bool isFolder)
{
    return {{idKey, id}, {nameKey, name}, {levelKey, 0}, {folderKey, isFolder}};
}

bool isFolder(const QVariantMap& object)
{
    return object.value(folderKey).toBool();
}

bool isDeleted(int state)
{
    return state == DELETED_OBJECT_STATE || state == COMPLETED_AND_DELETED_OBJECT_STATE;
}

QVariant handOut(SortModel* sortModel, ListModel::DataFunction dataFunction)
{
    sortModel->setSourceModel(new ListModel(std::move(dataFunction)));
    return QVariant::fromValue(sortModel);
}

QVariant handOut(TreeSortModel* sortModel, TreeModel* treeModel)
{
    sortModel->setSourceModel(treeModel);
    return QVariant::fromValue(sortModel);
}

// The tree of projects with pseudo-objects closing its root level, in the order given.
TreeHierarchy projectTreeWith(const QList<QVariantMap>& closingObjects)
{
    TreeHierarchy tree = DataManager::instance()->getProjectTree();
    tree.rootObjects << closingObjects;
    return tree;
}
} // namespace

struct ProjectHandler::Private
{
    QVariantMap norvelBoxObject;
    QVariantMap oneStepObject;
    // Stands for the root in the folder picker.
    const QVariantMap noFolderObject = pseudoObject(QString(), QStringLiteral("No folder"), true);

    // Favorites belong to the favorites manager, which is not part of the program yet: until it is,
    // nothing is a favorite, and adding or removing one keeps nothing. Kinds as the manager counts them.
    enum FavoriteType { FavoriteTask = 0, FavoriteProject = 1 };
    static void addFavorite(FavoriteType /*type*/, const QString& /*id*/) {}
    static void removeFavorite(FavoriteType /*type*/, const QString& /*id*/) {}
    static bool isFavorite(FavoriteType /*type*/, const QString& /*id*/) { return false; }
    static QStringList favoriteIds(FavoriteType /*type*/) { return {}; }
};

ProjectHandler::ProjectHandler(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    PredefinedDataHelper* predefined = PredefinedDataHelper::instance();
    d->norvelBoxObject = pseudoObject(predefined->norvelBoxId(), QStringLiteral("Norvel Box"), false);
    d->oneStepObject =
        pseudoObject(predefined->oneStepActionsId(), QStringLiteral("One Step Actions"), false);
    // Sync swaps in the server's ids on the database thread; the next model built must already carry them.
    connect(
        predefined, &PredefinedDataHelper::norvelBoxIdChanged, this,
        [this](const QString& id) { d->norvelBoxObject.insert(idKey, id); }, Qt::DirectConnection);
    connect(
        predefined, &PredefinedDataHelper::oneStepActionsIdChanged, this,
        [this](const QString& id) { d->oneStepObject.insert(idKey, id); }, Qt::DirectConnection);
}

ProjectHandler::~ProjectHandler() = default;

int ProjectHandler::getNestedFolderCount(const QString& folderId, bool includeDeleted)
{
    return data()->getNestedFolderCount(folderId, includeDeleted);
}

int ProjectHandler::getNestedProjectCount(const QString& folderId, bool includeDeleted)
{
    return data()->getNestedProjectCount(folderId, includeDeleted);
}

int ProjectHandler::getProjectCount()
{
    return data()->getProjectCount();
}

bool ProjectHandler::hasDeletedProjects()
{
    return data()->hasDeletedProjects();
}

bool ProjectHandler::hasDeletedFolders()
{
    return data()->hasDeletedFolders();
}

QVariantList ProjectHandler::getProjectNameChain(const QString& projectId)
{
    if (projectId.isEmpty())
        return {};
    if (projectId == d->norvelBoxObject.value(idKey).toString())
        return {tr("Norvel Box")};
    if (projectId == d->oneStepObject.value(idKey).toString())
        return {tr("One Step Actions")};
    QVariantList chain;
    for (const QString& name : data()->getProjectNameChain(projectId))
        chain.append(name);
    return chain;
}

QVariant ProjectHandler::getProjectById(const QString& id)
{
    return data()->getProjectById(id);
}

QString ProjectHandler::lastCreatedProjectId()
{
    return data()->lastCreatedObjectId();
}

QVariant ProjectHandler::getRootObjects()
{
    auto* sortModel = new ProjectFolderSortModel;
    sortModel->setExcludeCompletedObjectsType(SortModel::ExcludeCompletedProjects);
    sortModel->setModelType(ListTypeFolder, QStringLiteral("root_projects"));
    // The single-actions project has no row of its own but always closes the root list.
    return handOut(sortModel, [this] { return data()->getRootProjects() << d->oneStepObject; });
}

QVariant ProjectHandler::getNestedObjects(const QString& folderId)
{
    auto* sortModel = new ProjectFolderSortModel;
    sortModel->setExcludeCompletedObjectsType(SortModel::ExcludeCompletedProjects);
    sortModel->setModelType(ListTypeFolder, folderId);
    return handOut(sortModel, [folderId] { return data()->getNestedObjects(folderId); });
}

QVariant ProjectHandler::getProjectTreeModel()
{
    return handOut(new ProjectTreeSortModel,
                   new TreeModel([this] { return projectTreeWith({d->oneStepObject}); }));
}

QVariant ProjectHandler::getProjectTreeModelWithNorvelBox()
{
    return handOut(new ProjectTreeSortModel, new TreeModel([this] {
                       return projectTreeWith({d->oneStepObject, d->norvelBoxObject});
                   }));
}

QVariant ProjectHandler::getFolderTreeModel(const QString& filteredObjectId)
{
    auto* sortModel = new FolderTreeSortModel;
    sortModel->setFilteredObjectId(filteredObjectId);
    return handOut(sortModel, new FolderTreeModel([this] { return projectTreeWith({d->noFolderObject}); }));
}

QVariant ProjectHandler::getAllProjectsSearchModel()
{
    auto* sortModel = new SearchSortFilterModel(true);
    sortModel->setExcludeCompletedProjects(true);
    return handOut(sortModel, [] { return data()->getAllActiveProjects(); });
}

QVariant ProjectHandler::getAllFoldersSearchModel()
{
    return handOut(new SearchSortFilterModel(true), [] { return data()->getAllFolders(); });
}

QVariant ProjectHandler::getDeletedProjects()
{
    return handOut(new SortModel, [] { return data()->getDeletedProjects(); });
}

QVariant ProjectHandler::getDeletedFolders()
{
    return handOut(new SortModel, [] { return data()->getDeletedFolders(); });
}

bool ProjectHandler::createProject(const QVariantMap& project)
{
    return commitAndAnnounceAdded(data()->createProjectLocally(project), project);
}

bool ProjectHandler::createFolder(const QVariantMap& folder)
{
    return commitAndAnnounceAdded(data()->createProjectLocally(folder), folder);
}

bool ProjectHandler::updateProject(const QVariantMap& project)
{
    return commitAndAnnounceUpdated(data()->updateProjectLocally(project), project);
}

bool ProjectHandler::restoreProject(const QVariantMap& project)
{
    return commitAndAnnounceUpdated(data()->restoreProject(project), project);
}

bool ProjectHandler::restoreFolder(const QVariantMap& folder)
{
    return commitAndAnnounceUpdated(data()->restoreFolder(folder), folder);
}

bool ProjectHandler::cloneProject(const QVariantMap& project)
{
    const QString oldId = project.value(idKey).toString();
    if (oldId.isEmpty() || !createCopy(project))
        return false;
    const QString newId = data()->lastCreatedObjectId();
    if (newId.isEmpty())
        return false;
    copySortingSettings(oldId, newId, ListTypeProject);
    cloneProjectTasks(oldId, newId);
    return true;
}

bool ProjectHandler::cloneFolder(const QVariantMap& folder)
{
    const QString oldId = folder.value(idKey).toString();
    if (oldId.isEmpty() || !createCopy(folder))
        return false;
    const QString newId = data()->lastCreatedObjectId();
    if (newId.isEmpty())
        return false;
    copySortingSettings(oldId, newId, ListTypeFolder);
    for (DataObject child : data()->getNestedObjects(oldId)) {
        child.insert(parentKey, newId);
        for (const QString& key : {stateKey, levelKey, childrenKey, timestampKey})
            child.remove(key);
        // A child that fails to copy leaves its siblings to be copied all the same.
        if (isFolder(child))
            cloneFolder(child);
        else
            cloneProject(child);
    }
    return true;
}

bool ProjectHandler::moveProject(const QVariantMap& project, const QString& newParent,
                                 const QVariantMap& childrenInfo)
{
    const QString id = project.value(idKey).toString();
    if (id.isEmpty() || isFolder(project))
        return false;
    DataObject moved = project;
    moved.insert(parentKey, newParent);
    updateAndCommit(moved);
    restoreCutTasks(id, childrenInfo);
    return false;
}

bool ProjectHandler::moveFolder(const QVariantMap& folder, const QString& newParent,
                                const QVariantMap& childrenInfo)
{
    const QString id = folder.value(idKey).toString();
    if (id.isEmpty() || !isFolder(folder))
        return false;
    DataObject moved = folder;
    moved.insert(parentKey, newParent);
    updateAndCommit(moved);
    for (DataObject descendant : data()->getSubprojectsRecursive(id)) {
        const QString descendantId = descendant.value(idKey).toString();
        // The subtree query yields a blank row for the folder itself, which was moved above.
        if (descendantId == id || !childrenInfo.contains(descendantId))
            continue;
        descendant.insert(stateKey, childrenInfo.value(descendantId));
        updateAndCommit(descendant);
        if (!isFolder(descendant))
            restoreCutTasks(descendantId, childrenInfo);
    }
    return true;
}

bool ProjectHandler::markProjectAsDeleted(const QVariantMap& project, bool emitUpdateSignal)
{
    QLOG_INFO() << "Marking the project " << project.value(idKey).toString() << "with state "
                << project.value(stateKey).toInt() << "as deleted...\n";
    DataObject deleted = project;
    deleted.insert(stateKey, project.value(stateKey).toInt() | DELETED_OBJECT_STATE);
    const bool updated = data()->updateProjectLocally(deleted);
    if (emitUpdateSignal && updated) {
        emit projectUpdated(deleted);
        data()->startSyncDelayed();
    }
    return updated;
}

bool ProjectHandler::markProjectAsCompleted(const QVariantMap& project)
{
    QLOG_INFO() << "Marking the project " << project.value(idKey).toString() << "with state "
                << project.value(stateKey).toInt() << "as completed...\n";
    DataObject completed = project;
    completed.insert(stateKey, COMPLETED_OBJECT_STATE);
    const bool updated = data()->updateProjectLocally(completed);
    if (updated) {
        emit projectUpdated(completed);
        data()->startSyncDelayed();
    }
    return updated;
}

bool ProjectHandler::confirmProjectUpdate(const QVariantMap& project)
{
    const QString id = project.value(idKey).toString();
    // Gathered before the commit, while the open change still shows what it took along. A folder's
    // subtree holds the folder itself, so it leaves the favorites with its nested folders and projects.
    QList<DOTask> tasks;
    QList<DataObject> objects;
    if (isFolder(project)) {
        objects = data()->getSubprojectsRecursive(id);
        for (const DataObject& object : qAsConst(objects)) {
            if (!isFolder(object))
                tasks.append(data()->getDeletedProjectTasks(object.value(idKey).toString()));
        }
    } else {
        tasks = data()->getDeletedProjectTasks(id);
        objects.append(project);
    }
    if (!data()->commitChanges())
        return false;

    removeDeletedFromFavorites(objects);
    // A completed project keeps its tasks' favorites and reminders.
    if (isDeleted(data()->getProjectById(id).value(stateKey).toInt()))
        cleanUpDeletedTasks(tasks);
    emit projectUpdated(project);
    return true;
}

void ProjectHandler::revertProjectState(const QVariantMap& project, bool emitUpdateSignal)
{
    QLOG_INFO() << "Reverting project's state...\n" << project.value(idKey).toString();
    data()->rollbackChanges();
    data()->cancelDelayedSync();
    if (emitUpdateSignal)
        emit projectUpdated(project);
}

void ProjectHandler::addToFavorites(const QVariantMap& project)
{
    Private::addFavorite(Private::FavoriteProject, project.value(idKey).toString());
}

void ProjectHandler::removeFromFavorites(const QVariantMap& project)
{
    Private::removeFavorite(Private::FavoriteProject, project.value(idKey).toString());
}

bool ProjectHandler::inFavorites(const QVariantMap& project)
{
    return Private::isFavorite(Private::FavoriteProject, project.value(idKey).toString());
}

int ProjectHandler::projectCountInFavorites()
{
    int count = 0;
    for (const QString& id : Private::favoriteIds(Private::FavoriteProject)) {
        const DOProject stored = data()->getProjectById(id);
        if (!stored.isEmpty() && stored.value(stateKey).toInt() == DEFAULT_OBJECT_STATE)
            ++count;
    }
    return count;
}

bool ProjectHandler::commitAndAnnounceAdded(bool stored, const QVariantMap& project)
{
    const bool committed = data()->commitChanges();
    if (!stored || !committed)
        return false;
    emit projectAdded(project);
    data()->startSyncDelayed();
    return true;
}

bool ProjectHandler::commitAndAnnounceUpdated(bool stored, const QVariantMap& project)
{
    const bool committed = data()->commitChanges();
    if (!stored || !committed)
        return false;
    emit projectUpdated(project);
    data()->startSyncDelayed();
    return true;
}

bool ProjectHandler::createCopy(QVariantMap object)
{
    object.remove(idKey);
    return commitAndAnnounceAdded(data()->createProjectLocally(object), object);
}

void ProjectHandler::copySortingSettings(const QString& oldId, const QString& newId, ListType listType)
{
    if (!data()->hasSortedListInfo(oldId, listType))
        return;
    // The manual order stays behind: it names the original's children, and the copies have new ids.
    const SortedListInfo info = data()->getSortedListInfo(oldId, listType);
    data()->setSortedList(newId, listType, info.sortingType, info.groupByDate);
}

void ProjectHandler::cloneProjectTasks(const QString& oldId, const QString& newId)
{
    // Left in the open transaction: the next commit, whoever makes it, takes them along.
    for (DOTask task : data()->getProjectTasks(oldId)) {
        task.insert(parentKey, newId);
        for (const QString& key : {idKey, syncedKey, localKey})
            task.remove(key);
        data()->createTaskLocally(task);
    }
}

bool ProjectHandler::updateAndCommit(const DataObject& object)
{
    return commitAndAnnounceUpdated(data()->updateProjectLocally(object), object);
}

void ProjectHandler::restoreCutTasks(const QString& projectId, const QVariantMap& childrenInfo)
{
    // A task missing from childrenInfo was in the trash before the cut and stays there. Not committed.
    for (DOTask task : data()->getDeletedProjectTasks(projectId)) {
        const QString taskId = task.value(idKey).toString();
        if (!childrenInfo.contains(taskId))
            continue;
        task.insert(stateKey, childrenInfo.value(taskId));
        data()->updateTaskLocally(task);
    }
}

void ProjectHandler::removeDeletedFromFavorites(const QList<DataObject>& objects)
{
    for (const DataObject& object : objects) {
        const DOProject stored = data()->getProjectById(object.value(idKey).toString());
        if (stored.value(stateKey).toInt() != DEFAULT_OBJECT_STATE && inFavorites(stored))
            removeFromFavorites(stored);
    }
}

void ProjectHandler::cleanUpDeletedTasks(const QList<DOTask>& tasks)
{
    for (const DOTask& task : tasks) {
        const QString taskId = task.value(idKey).toString();
        if (Private::isFavorite(Private::FavoriteTask, taskId))
            Private::removeFavorite(Private::FavoriteTask, taskId);
        data()->removeAllRemindersById(taskId);
        if (!task.value(periodKey).toString().isEmpty())
            data()->removeAllRepeatedReminders(taskId);
    }
}

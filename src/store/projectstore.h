#pragma once

#include "store/dataobject.h"

#include <QDate>
#include <QObject>
#include <QStringList>

#include <memory>

class DatabaseHandler;

// Projects and folders, which share the table `project`: writes with their cascades down the tree,
// restores up the tree, the recursive reads and the counts. Lives on the database thread.
class ProjectStore : public QObject
{
    Q_OBJECT

public:
    explicit ProjectStore(DatabaseHandler* database, QObject* parent = nullptr);
    ~ProjectStore() override;

    bool createProjectLocally(const DataObject& project);
    bool createProjectRemotely(const QVariantMap& project);
    bool updateProjectLocally(const DataObject& project, QList<QVariantMap>* updatedObjects = nullptr,
                              QVariantMap* updatedProject = nullptr);
    bool updateProjectRemotely(const QVariantMap& project);
    bool restoreProject(const DOProject& project);
    bool restoreFolder(const DOFolder& folder);
    bool updatePredefinedFolder(const QString& oldId, const QString& newId);

    // Brings deleted ancestors of a newly active object back, without marking them unsynced.
    bool restoreParents(const DataObject& object);

    DOProject getProjectById(const QString& id);
    QList<DataObject> getNestedObjects(const QString& folderId);
    QList<DOFolder> getDeletedSubfolders(const QString& folderId);
    QList<DOProject> getDeletedSubprojects(const QString& folderId);
    QList<DOProject> getAllActiveProjects();
    QList<DOFolder> getAllFolders();
    QList<DOProject> getDeletedProjects();
    QList<DOProject> getProjectsToUpdate();
    QList<DOProject> getProjectsToDeleteOrComplete();

    QList<DataObject> getRootProjects();
    TreeHierarchy getProjectTree();
    QList<DOFolder> getDeletedFolders();
    QList<DOFolder> getFoldersToUpdate();
    QList<DOFolder> getFoldersToDelete();

    QList<DataObject> getSubprojectsRecursive(const QString& folderId);
    QStringList getProjectNameChain(const QString& projectId);

    int getNestedFolderCount(const QString& folderId, bool includeDeleted);
    int getNestedProjectCount(const QString& folderId, bool includeDeleted);
    bool hasDeletedProjects();
    bool hasDeletedFolders();
    int getProjectCount();
    int getProjectTaskCount(const QString& projectId);
    bool projectHasTasks(const DOProject& project);
    bool projectHasActiveTasks(const DOProject& project);
    bool folderHasActiveObjects(const DOFolder& folder);

    // Dated projects of a day for the daily plan, by the same day rules as tasks.
    QList<DOProject> getDayProjects(const QDate& date);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

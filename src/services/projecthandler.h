#pragma once

#include "store/dataobject.h"
#include "sync/sortingnamespace.h"

#include <QObject>
#include <QString>
#include <QVariant>
#include <QVariantList>
#include <QVariantMap>

#include <memory>

// What the interface may do to projects and folders, which share one table and differ by FOLDER.
// Delete and complete come in two phases: the mark leaves the change in the open transaction, so
// that the undo offer can still roll it back, and the confirmation commits it and cleans up after it.
// Models are handed out without a parent; the page that receives one frees it with requestDeletion().
class ProjectHandler : public QObject
{
    Q_OBJECT

public:
    explicit ProjectHandler(QObject* parent = nullptr);
    ~ProjectHandler() override;

    Q_INVOKABLE int getNestedFolderCount(const QString& folderId, bool includeDeleted = false);
    Q_INVOKABLE int getNestedProjectCount(const QString& folderId, bool includeDeleted = false);
    Q_INVOKABLE int getProjectCount();
    Q_INVOKABLE bool hasDeletedProjects();
    Q_INVOKABLE bool hasDeletedFolders();
    Q_INVOKABLE QVariantList getProjectNameChain(const QString& projectId);
    Q_INVOKABLE QVariant getProjectById(const QString& id);
    Q_INVOKABLE QString lastCreatedProjectId();

    // Each call makes a new pair of a ListModel and the sort model that is returned.
    Q_INVOKABLE QVariant getRootObjects();
    Q_INVOKABLE QVariant getNestedObjects(const QString& folderId);
    Q_INVOKABLE QVariant getProjectTreeModel();
    Q_INVOKABLE QVariant getProjectTreeModelWithNorvelBox();
    Q_INVOKABLE QVariant getFolderTreeModel(const QString& filteredObjectId);
    Q_INVOKABLE QVariant getAllProjectsSearchModel();
    Q_INVOKABLE QVariant getAllFoldersSearchModel();
    Q_INVOKABLE QVariant getDeletedProjects();
    Q_INVOKABLE QVariant getDeletedFolders();

    // Committed at once.
    Q_INVOKABLE bool createProject(const QVariantMap& project);
    Q_INVOKABLE bool createFolder(const QVariantMap& folder);
    Q_INVOKABLE bool updateProject(const QVariantMap& project);
    Q_INVOKABLE bool restoreProject(const QVariantMap& project);
    Q_INVOKABLE bool restoreFolder(const QVariantMap& folder);

    // Paste after copy: the caller has set PARENT to the destination.
    Q_INVOKABLE bool cloneProject(const QVariantMap& project);
    Q_INVOKABLE bool cloneFolder(const QVariantMap& folder);
    // Paste after cut. The object arrives with its state from before the cut; childrenInfo maps the
    // id of every descendant and task that the cut took along to its earlier STATE. Callers ignore
    // the results.
    Q_INVOKABLE bool moveProject(const QVariantMap& project, const QString& newParent,
                                 const QVariantMap& childrenInfo);
    Q_INVOKABLE bool moveFolder(const QVariantMap& folder, const QString& newParent,
                                const QVariantMap& childrenInfo);

    // Two-phase delete and complete, for projects and folders alike.
    Q_INVOKABLE bool markProjectAsDeleted(const QVariantMap& project, bool emitUpdateSignal = true);
    Q_INVOKABLE bool markProjectAsCompleted(const QVariantMap& project);
    Q_INVOKABLE bool confirmProjectUpdate(const QVariantMap& project);
    Q_INVOKABLE void revertProjectState(const QVariantMap& project, bool emitUpdateSignal = true);

    Q_INVOKABLE void addToFavorites(const QVariantMap& project);
    Q_INVOKABLE void removeFromFavorites(const QVariantMap& project);
    Q_INVOKABLE bool inFavorites(const QVariantMap& project);
    Q_INVOKABLE int projectCountInFavorites();

signals:
    void projectAdded(const QVariantMap& project);
    void projectUpdated(const QVariantMap& project);

private:
    bool commitAndAnnounceAdded(bool stored, const QVariantMap& project);
    bool commitAndAnnounceUpdated(bool stored, const QVariantMap& project);
    bool createCopy(QVariantMap object);
    void copySortingSettings(const QString& oldId, const QString& newId, SortingNamespace::ListType listType);
    void cloneProjectTasks(const QString& oldId, const QString& newId);
    bool updateAndCommit(const DataObject& object);
    void restoreCutTasks(const QString& projectId, const QVariantMap& childrenInfo);
    void removeDeletedFromFavorites(const QList<DataObject>& objects);
    void cleanUpDeletedTasks(const QList<DOTask>& tasks);

    struct Private;
    std::unique_ptr<Private> d;
};

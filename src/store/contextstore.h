#pragma once

#include "store/dataobject.h"

#include <QObject>
#include <QStringList>

#include <memory>

class DatabaseHandler;

// Nested contexts (table `context`) with their cascades onto tasks and projects. Lives on the
// database thread.
class ContextStore : public QObject
{
    Q_OBJECT

public:
    explicit ContextStore(DatabaseHandler* database, QObject* parent = nullptr);
    ~ContextStore() override;

    bool createContextLocally(const DOContext& context);
    bool createContextRemotely(const QVariantMap& context);
    bool updateContextLocally(const DOContext& context, QList<DataObject>* updatedObjects = nullptr);
    bool updateContextRemotely(const QVariantMap& context);
    bool restoreContext(const DOContext& context);
    bool updatePredefinedContext(const QString& oldId, const QString& newId, bool isDeleted);

    QList<DOContext> getAllContexts();
    DOContext getContextById(const QString& id);
    QList<DOContext> getNestedContexts(const QString& contextId);
    QList<DOContext> getDeletedSubcontexts(const QString& contextId);

    QList<DOContext> getRootContexts();
    TreeHierarchy getContextTree();
    QList<DOContext> getDeletedContexts();
    QList<DOContext> getContextsToUpdate();
    QList<DOContext> getContextsToDelete();

    // Active subcontexts, then projects, then tasks that carry the context, in one list.
    QList<DataObject> getContextChildren(const QString& contextId);
    QList<DOProject> getContextProjects(const QString& contextId);
    QList<DataObject> getAllObjects();
    QList<DOContext> getSubcontextsRecursive(const QString& contextId);
    QStringList getContextNameChain(const QString& contextId);

    int getContextProjectCount(const QString& contextId);
    int getNestedContextCount(const QString& contextId, bool includeAllStates);
    int getContextTaskCountRecursive(const QString& contextId);
    int getContextProjectCountRecursive(const QString& contextId);
    bool hasDeletedContexts();
    int getContextCount();
    bool contextHasActiveObjects(const DOContext& context);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

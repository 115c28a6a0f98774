#pragma once

#include "store/dataobject.h"

#include <QObject>
#include <QString>
#include <QVariant>
#include <QVariantList>
#include <QVariantMap>

#include <memory>

// What the interface may do to nested contexts. Deletion comes in two phases as for tasks and
// projects: the mark leaves the change, with its emptying of the tasks' and projects' CONTEXT, in the
// open transaction; the confirmation commits it. Models are handed out without a parent; the page that
// receives one frees it with requestDeletion().
class ContextHandler : public QObject
{
    Q_OBJECT

public:
    explicit ContextHandler(QObject* parent = nullptr);
    ~ContextHandler() override;

    Q_INVOKABLE int getNestedContextCount(const QString& contextId, bool indcludeAllStates = false);
    Q_INVOKABLE QVariantList getContextNameChain(const QString& contextId);
    Q_INVOKABLE QVariant getContextById(const QString& id);
    Q_INVOKABLE QString lastCreatedContextId();
    Q_INVOKABLE int getContextCount();
    Q_INVOKABLE bool hasDeletedContexts();
    // Active tasks or projects carrying exactly this context.
    Q_INVOKABLE int getContextTaskCount(const QString& contextId);
    Q_INVOKABLE int getContextProjectCount(const QString& contextId);
    // The same over the context and every context below it, whatever their states.
    Q_INVOKABLE int getContextTaskCountRecursive(const QString& contextId);
    Q_INVOKABLE int getContextProjectCountRecursive(const QString& contextId);

    // Each call makes a new pair of a ListModel and the sort model that is returned.
    Q_INVOKABLE QVariant getContextTreeModel(const QString& filteredObjectId);
    Q_INVOKABLE QVariant getRootContextListModel();
    Q_INVOKABLE QVariant getAllContextsSearchModel();
    Q_INVOKABLE QVariant getContextChildren(const QString& id);
    Q_INVOKABLE QVariant getDeletedContexts();

    // Committed at once.
    Q_INVOKABLE bool createContext(const QVariantMap& context);
    Q_INVOKABLE bool updateContext(const QVariantMap& context);
    Q_INVOKABLE bool restoreContext(const QVariantMap& context);

    // Paste after copy: the caller has set PARENT to the destination. Nested contexts are copied,
    // tasks and projects keep the one context they have.
    Q_INVOKABLE bool cloneContext(const QVariantMap& context);
    // Paste after cut. childrenInfo maps each nested context's id to its earlier STATE and each task's
    // id to its earlier CONTEXT. Callers ignore the result.
    Q_INVOKABLE bool moveContext(const QVariantMap& context, const QString& newParent,
                                 const QVariantMap& childrenInfo);

    Q_INVOKABLE bool markContextAsDeleted(const QVariantMap& context, bool emitUpdateSignal = true);
    Q_INVOKABLE bool confirmContextUpdate(const QVariantMap& context);
    Q_INVOKABLE void revertContextState(const QVariantMap& context, bool emitUpdateSignal = true);

    Q_INVOKABLE void addToFavorites(const QVariantMap& context);
    Q_INVOKABLE void removeFromFavorites(const QVariantMap& context);
    Q_INVOKABLE bool inFavorites(const QVariantMap& context);
    Q_INVOKABLE int contextCountInFavorites();

signals:
    void contextAdded(const QVariantMap& context);
    void contextUpdated(const QVariantMap& context);

private:
    bool commitAndAnnounceAdded(bool stored, const QVariantMap& context);
    bool commitAndAnnounceUpdated(bool stored, const QVariantMap& context);
    void copySortingSettings(const QString& oldId, const QString& newId);
    void restoreCutSubcontexts(const QString& contextId, const QVariantMap& childrenInfo);
    void restoreCutTaskContexts(const QVariantMap& childrenInfo);

    struct Private;
    std::unique_ptr<Private> d;
};

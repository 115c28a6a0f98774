#pragma once

#include "sync/sortedlistinfo.h"
#include "sync/sortingnamespace.h"

#include <QSortFilterProxyModel>
#include <QVariantList>
#include <QVariantMap>

#include <memory>

class ListModel;
class SortKey;

// The proxy every flat list shows. It orders the rows by the list's saved sorting settings, hides
// completed objects as the settings ask, counts the active rows, and turns a drag into a manual
// order. Subclasses add rules for the predefined objects and for mixed lists.
class SortModel : public QSortFilterProxyModel
{
    Q_OBJECT
    Q_PROPERTY(int activeObjectCount READ activeObjectCount NOTIFY activeObjectCountChanged)

public:
    // Which "show completed" setting decides whether completed rows are shown.
    enum ExcludeType { ExcludeCompletedProjects = 0, ExcludeCompletedTasks = 1 };
    Q_ENUM(ExcludeType)

    explicit SortModel(QObject* parent = nullptr);
    ~SortModel() override;

    void setExcludeCompletedObjectsType(ExcludeType type);
    ExcludeType excludeCompletedObjectsType() const;

    // Names the stored list whose sorting settings this model follows, and loads them.
    void setModelType(SortingNamespace::ListType listType, const QString& listId);
    // Takes a list's sorting settings as given, without asking the store. The rows follow them at the
    // next re-sort: a change of the source or a new source model.
    void setSortedListInfo(const SortedListInfo& info);

    void setSourceModel(QAbstractItemModel* sourceModel) override;

    int activeObjectCount() const;

    Q_INVOKABLE void switchToManualSortingMode();
    Q_INVOKABLE virtual void update();
    Q_INVOKABLE virtual void moveItem(int oldIndex, int newIndex);
    using QSortFilterProxyModel::sort;
    // Reloads the list's sorting settings and sorts again.
    Q_INVOKABLE void sort();
    Q_INVOKABLE virtual void clear();
    Q_INVOKABLE void requestDeletion();
    Q_INVOKABLE QVariantList getTaskList() const;
    Q_INVOKABLE QVariantList getObjectList() const;
    Q_INVOKABLE int getIndexByObjectId(const QString& objectId) const;
    Q_INVOKABLE QVariantMap getObjectByIndex(int index) const;

signals:
    void updated();
    void activeObjectCountChanged(int activeObjectCount);

protected:
    // Answers of the two hooks below: no decision, `a` first, `b` first.
    enum SortDecision { NoDecision = 0, LeftFirst = 1, RightFirst = 2 };

    bool lessThan(const QModelIndex& sourceLeft, const QModelIndex& sourceRight) const override;
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

    // Keeps the predefined objects in their places; asked before the manual order.
    virtual int predefinedObjectsSort(const QVariantMap& a, const QVariantMap& b) const;
    // The rule of a mixed list; a manual position beats it.
    virtual int doAdditionalSort(const QVariantMap& a, const QVariantMap& b) const;
    // Counts the active rows of the source, hidden ones included.
    virtual void checkHasActiveObjects();
    // The section of a list with sections, which orders rows before any other rule; 0 for all rows
    // of a list without them. Read once per row change, from the row's key, and kept with it.
    virtual int sortGroupOf(const SortKey& key) const;
    // The section of a source row, from its key.
    int sortGroupOfSourceRow(int row) const;

    void setActiveObjectCount(int count);
    // The record behind a source index.
    static QVariantMap recordAt(const QModelIndex& sourceIndex);
    // The record of a visible row.
    QVariantMap visibleRecord(int row) const;

private:
    ListModel* listModel() const;
    QStringList visibleIds() const;
    bool sortsManually() const;
    int manualPosition(const QVariantMap& object) const;
    void reloadSortedListInfo();
    void storeManualOrder(const SortingNamespace::OrderHash& order);
    void applyManualOrder(const SortingNamespace::OrderHash& order);
    void resortAllRows();
    bool completedObjectsShown() const;

    bool hasKey(const QModelIndex& sourceIndex) const;
    bool lessThanByKeys(const SortKey& a, const SortKey& b, int positionA, int positionB) const;
    SortKey keyOf(const QVariantMap& record) const;
    SortKey keyOfSourceRow(int row) const;
    int manualPositionOfSourceRow(int row) const;
    void refreshManualPositions();
    void rebuildKeys();
    bool refreshKey(const ListModel* list, int row);
    bool isKeyCurrent(int row, const QVariantMap& record) const;
    void connectKeyUpkeep(QAbstractItemModel* source);
    void takeOverDataChanges(QAbstractItemModel* source);
    void handleSourceDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                 const QVector<int>& roles);
    void passDataChange(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                        const QVector<int>& roles);
    QModelIndex sourceIndex(int row, int column) const;

    struct Private;
    std::unique_ptr<Private> d;
};

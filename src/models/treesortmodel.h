#pragma once

#include "models/sortmodel.h"

#include <functional>
#include <memory>

class TreeModel;

// Sorts the flat rows of a TreeModel so that the depth-first order survives a sort that only ever
// compares two rows: rows of one parent follow that parent's sorting settings, and rows of different
// branches sort as their branches do. The tree type is "projects" or "contexts".
class TreeSortModel : public SortModel
{
    Q_OBJECT

public:
    explicit TreeSortModel(const QString& treeType, QObject* parent = nullptr);
    ~TreeSortModel() override;

    QString treeType() const;

    void setSourceModel(QAbstractItemModel* sourceModel) override;

    Q_INVOKABLE void update() override;
    // Reorders rows of one level and stores the order for the dragged row's parent; the interface
    // calls sort() after it.
    Q_INVOKABLE void moveItem(int oldIndex, int newIndex) override;
    Q_INVOKABLE void clear() override;
    Q_INVOKABLE QVariantMap getObjectById(const QString& id) const;

public slots:
    void openItem(const QString& objectId);
    void closeItem(const QString& objectId);

protected:
    bool lessThan(const QModelIndex& sourceLeft, const QModelIndex& sourceRight) const override;

    // Two rows under the same parent.
    virtual bool sameBranchSorting(const QVariantMap& a, const QVariantMap& b) const;
    // Two rows of one level under different parents: their ancestors decide where the parents meet.
    virtual bool sameLevelSorting(const QVariantMap& a, const QVariantMap& b) const;
    // `a` is deeper than `b`, which is at `level`; and the other way round.
    virtual bool leftLevelGreater(const QVariantMap& a, const QVariantMap& b, int level) const;
    virtual bool rightLevelGreater(const QVariantMap& a, const QVariantMap& b, int level) const;
    virtual void saveSortedListInfo(const QString& listId, const SortingNamespace::OrderHash& order) = 0;

    SortingNamespace::ListType listType() const;
    // The stored list that orders the children of a parent; the roots have a list of their own.
    QString branchListId(const QString& parentId) const;
    // The sorting settings of the list that `object` is in, as read at the start of this sort pass.
    const SortedListInfo& branchSortedListInfo(const QVariantMap& object) const;
    // A manual position decides only when both rows have one.
    int manualBranchDecision(const QVariantMap& a, const QVariantMap& b) const;
    // The rule for two rows of one branch that nothing else told apart.
    bool compareWithinBranch(const QVariantMap& a, const QVariantMap& b) const;
    int levelOfVisibleRow(int row) const;

    // An empty filter names no object: the pseudo-objects with an empty ID stay in the pickers.
    static bool isFilteredObject(const QVariantMap& object, const QString& filteredObjectId);
    // Follows `parentKey` upwards from `firstId` and tells whether the chain passes `soughtId`. It
    // ends at an empty id, an id that `objectById` does not know, or an id it has seen.
    static bool chainPasses(const QString& firstId, const QString& soughtId, const QString& parentKey,
                            const std::function<QVariantMap(const QString&)>& objectById);

private:
    QVariantMap ancestorAtLevel(QVariantMap object, int level) const;
    int sameLevelIndex(int row) const;
    void readAllSortedListInfos();
    void readMissingSortedListInfos(int first, int last);

    struct Private;
    std::unique_ptr<Private> d;
};

#pragma once

#include "models/treesortmodel.h"

// The tree of folders and projects: completed projects hidden, folders before projects unless a
// manual order says otherwise, and the single-actions project last with the inbox just before it.
class ProjectTreeSortModel : public TreeSortModel
{
    Q_OBJECT

public:
    explicit ProjectTreeSortModel(QObject* parent = nullptr);

    // A project or folder can only be dragged among rows of its own level.
    Q_INVOKABLE void moveItem(int oldIndex, int newIndex) override;

protected:
    bool lessThan(const QModelIndex& sourceLeft, const QModelIndex& sourceRight) const override;
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;
    bool sameBranchSorting(const QVariantMap& a, const QVariantMap& b) const override;
    void saveSortedListInfo(const QString& listId, const SortingNamespace::OrderHash& order) override;
};

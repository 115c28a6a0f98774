#pragma once

#include "models/treesortmodel.h"

// The tree of contexts, with "No context" last. The picker that moves a context hides that context,
// and with it everything below, since no row can open it.
class ContextTreeSortModel : public TreeSortModel
{
    Q_OBJECT

public:
    explicit ContextTreeSortModel(QObject* parent = nullptr);

    QString filteredObjectId() const;
    void setFilteredObjectId(const QString& objectId);

protected:
    bool lessThan(const QModelIndex& sourceLeft, const QModelIndex& sourceRight) const override;
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;
    bool sameBranchSorting(const QVariantMap& a, const QVariantMap& b) const override;
    void saveSortedListInfo(const QString& listId, const SortingNamespace::OrderHash& order) override;

private:
    QString m_filteredObjectId;
};

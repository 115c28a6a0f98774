#pragma once

#include "models/projecttreesortmodel.h"

// The folder picker: folders only, without the folder being moved and anything inside it, so that a
// folder cannot be moved into itself.
class FolderTreeSortModel : public ProjectTreeSortModel
{
    Q_OBJECT

public:
    using ProjectTreeSortModel::ProjectTreeSortModel;

    QString filteredObjectId() const;
    void setFilteredObjectId(const QString& objectId);

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    QString m_filteredObjectId;
};

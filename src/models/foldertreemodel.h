#pragma once

#include "models/treemodel.h"

// The tree of the folder picker, which shows folders alone: only a folder among the children makes
// a row expandable.
class FolderTreeModel : public TreeModel
{
    Q_OBJECT

public:
    using TreeModel::TreeModel;

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
};

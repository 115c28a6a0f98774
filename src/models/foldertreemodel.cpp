#include "foldertreemodel.h"

#include <algorithm>

QVariant FolderTreeModel::data(const QModelIndex& index, int role) const
{
    if (role != hasChildrenRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return TreeModel::data(index, role);
    const QList<QVariantMap> children = childrenOf(TreeModel::data(index, treeItemRole).toMap());
    return std::any_of(children.cbegin(), children.cend(), [](const QVariantMap& child) {
        return child.value(QStringLiteral("FOLDER")).toBool();
    });
}

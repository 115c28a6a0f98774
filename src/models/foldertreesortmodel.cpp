#include "foldertreesortmodel.h"

#include "store/datamanager.h"

QString FolderTreeSortModel::filteredObjectId() const
{
    return m_filteredObjectId;
}

void FolderTreeSortModel::setFilteredObjectId(const QString& objectId)
{
    m_filteredObjectId = objectId;
    invalidateFilter();
}

// The parents are read from the store, which knows folders that the tree leaves out.
bool FolderTreeSortModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    if (!ProjectTreeSortModel::filterAcceptsRow(sourceRow, sourceParent))
        return false;
    const QVariantMap object = recordAt(sourceModel()->index(sourceRow, 0, sourceParent));
    if (!object.value(QStringLiteral("FOLDER")).toBool() || isFilteredObject(object, m_filteredObjectId))
        return false;
    return !chainPasses(object.value(QStringLiteral("PARENT")).toString(), m_filteredObjectId,
                        QStringLiteral("PARENT"),
                        [](const QString& id) { return DataManager::instance()->getProjectById(id); });
}

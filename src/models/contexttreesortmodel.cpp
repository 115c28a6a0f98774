#include "contexttreesortmodel.h"

#include "store/datamanager.h"

namespace {

bool isNoContextObject(const QVariantMap& object)
{
    return object.value(QStringLiteral("ID")).toString().isEmpty();
}

} // namespace

ContextTreeSortModel::ContextTreeSortModel(QObject* parent)
    : TreeSortModel(QStringLiteral("contexts"), parent)
{}

QString ContextTreeSortModel::filteredObjectId() const
{
    return m_filteredObjectId;
}

void ContextTreeSortModel::setFilteredObjectId(const QString& objectId)
{
    m_filteredObjectId = objectId;
    invalidateFilter();
}

bool ContextTreeSortModel::lessThan(const QModelIndex& sourceLeft, const QModelIndex& sourceRight) const
{
    if (isNoContextObject(recordAt(sourceLeft)))
        return false;
    if (isNoContextObject(recordAt(sourceRight)))
        return true;
    return TreeSortModel::lessThan(sourceLeft, sourceRight);
}

// Contexts name their parent in PARENT and carry no CONTEXT, so the walk by CONTEXT ends at once and
// only the filtered row itself is rejected; its children stay hidden behind it.
bool ContextTreeSortModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    const QVariantMap object = recordAt(sourceModel()->index(sourceRow, 0, sourceParent));
    if (isFilteredObject(object, m_filteredObjectId))
        return false;
    return !chainPasses(object.value(QStringLiteral("CONTEXT")).toString(), m_filteredObjectId,
                        QStringLiteral("CONTEXT"), [this](const QString& id) { return getObjectById(id); });
}

bool ContextTreeSortModel::sameBranchSorting(const QVariantMap& a, const QVariantMap& b) const
{
    const int manualDecision = manualBranchDecision(a, b);
    if (manualDecision != NoDecision)
        return manualDecision == LeftFirst;
    return compareWithinBranch(a, b);
}

void ContextTreeSortModel::saveSortedListInfo(const QString& listId, const SortingNamespace::OrderHash& order)
{
    DataManager::instance()->setManualSortedList(listId, SortingNamespace::ListTypeContext, order);
}

#include "projecttreesortmodel.h"

#include "store/datamanager.h"
#include "store/predefineddatahelper.h"

namespace {

QString idOf(const QVariantMap& object)
{
    return object.value(QStringLiteral("ID")).toString();
}

bool isFolder(const QVariantMap& object)
{
    return object.value(QStringLiteral("FOLDER")).toBool();
}

} // namespace

ProjectTreeSortModel::ProjectTreeSortModel(QObject* parent)
    : TreeSortModel(QStringLiteral("projects"), parent)
{}

void ProjectTreeSortModel::moveItem(int oldIndex, int newIndex)
{
    if (oldIndex < 0 || newIndex < 0 || oldIndex >= rowCount() || newIndex >= rowCount() ||
        levelOfVisibleRow(oldIndex) != levelOfVisibleRow(newIndex))
        return;
    TreeSortModel::moveItem(oldIndex, newIndex);
}

bool ProjectTreeSortModel::lessThan(const QModelIndex& sourceLeft, const QModelIndex& sourceRight) const
{
    const QString idA = idOf(recordAt(sourceLeft));
    const QString idB = idOf(recordAt(sourceRight));
    const PredefinedDataHelper* predefined = PredefinedDataHelper::instance();
    for (const QString& lastId : {predefined->oneStepActionsId(), predefined->norvelBoxId()}) {
        if (idA == lastId)
            return false;
        if (idB == lastId)
            return true;
    }
    return TreeSortModel::lessThan(sourceLeft, sourceRight);
}

bool ProjectTreeSortModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    const QVariantMap object = recordAt(sourceModel()->index(sourceRow, 0, sourceParent));
    return object.value(QStringLiteral("STATE")).toInt() != 2;
}

bool ProjectTreeSortModel::sameBranchSorting(const QVariantMap& a, const QVariantMap& b) const
{
    const int manualDecision = manualBranchDecision(a, b);
    if (manualDecision != NoDecision)
        return manualDecision == LeftFirst;
    const bool folderA = isFolder(a);
    if (folderA != isFolder(b))
        return folderA;
    return compareWithinBranch(a, b);
}

void ProjectTreeSortModel::saveSortedListInfo(const QString& listId, const SortingNamespace::OrderHash& order)
{
    DataManager::instance()->setManualSortedList(listId, SortingNamespace::ListTypeFolder, order);
}

#include "treesortmodel.h"

#include "models/manualorder.h"
#include "models/treemodel.h"
#include "store/datamanager.h"
#include "store/objectkeys.h"
#include "sync/sortinghelper.h"

#include <QSet>

using SortingNamespace::ListType;
using SortingNamespace::OrderHash;

namespace {

QString idOf(const QVariantMap& object)
{
    return object.value(idKey).toString();
}

QString parentOf(const QVariantMap& object)
{
    return object.value(parentKey).toString();
}

int levelOf(const QVariantMap& object)
{
    return object.value(levelKey).toInt();
}

} // namespace

struct TreeSortModel::Private
{
    explicit Private(const QString& treeType)
        : treeType(treeType)
    {}

    const QString treeType;
    TreeModel* treeModel = nullptr;
    // Sorting settings by list id, read once per sort pass: a comparison must not wait for the
    // database thread.
    QHash<QString, SortedListInfo> sortedListInfos;
    const SortedListInfo unsortedList;
};

TreeSortModel::TreeSortModel(const QString& treeType, QObject* parent)
    : SortModel(parent)
    , d(std::make_unique<Private>(treeType))
{}

TreeSortModel::~TreeSortModel() = default;

QString TreeSortModel::treeType() const
{
    return d->treeType;
}

// Connected before the proxy's own handlers, so that the settings are fresh when it sorts.
void TreeSortModel::setSourceModel(QAbstractItemModel* sourceModel)
{
    d->treeModel = qobject_cast<TreeModel*>(sourceModel);
    if (!d->treeModel)
        return;
    connect(d->treeModel, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& topLeft, const QModelIndex& bottomRight) {
                if (!topLeft.isValid() || !bottomRight.isValid())
                    return;
                if (topLeft.row() == 0 && bottomRight.row() == d->treeModel->rowCount() - 1)
                    readAllSortedListInfos();
                else
                    readMissingSortedListInfos(topLeft.row(), bottomRight.row());
            });
    connect(d->treeModel, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex&, int first, int last) { readMissingSortedListInfos(first, last); });
    connect(d->treeModel, &QAbstractItemModel::layoutChanged, this, &TreeSortModel::readAllSortedListInfos);
    connect(d->treeModel, &QAbstractItemModel::modelReset, this, &TreeSortModel::readAllSortedListInfos);
    readAllSortedListInfos();
    SortModel::setSourceModel(sourceModel);
}

void TreeSortModel::update()
{
    if (!d->treeModel)
        return;
    d->treeModel->update();
    checkHasActiveObjects();
    emit updated();
}

void TreeSortModel::moveItem(int oldIndex, int newIndex)
{
    if (oldIndex == newIndex || oldIndex < 0 || newIndex < 0 || oldIndex >= rowCount() ||
        newIndex >= rowCount())
        return;
    const int level = levelOfVisibleRow(oldIndex);
    QStringList sameLevelIds;
    for (int row = 0; row < rowCount(); ++row) {
        if (levelOfVisibleRow(row) == level)
            sameLevelIds.append(idOf(visibleRecord(row)));
    }
    const OrderHash order =
        ManualOrder::afterMove(sameLevelIds, sameLevelIndex(oldIndex), sameLevelIndex(newIndex));
    saveSortedListInfo(branchListId(parentOf(visibleRecord(oldIndex))), order);
}

void TreeSortModel::clear()
{
    if (d->treeModel)
        d->treeModel->clear();
}

QVariantMap TreeSortModel::getObjectById(const QString& id) const
{
    return d->treeModel ? d->treeModel->getObjectById(id) : QVariantMap();
}

void TreeSortModel::openItem(const QString& objectId)
{
    if (d->treeModel)
        d->treeModel->openItem(objectId);
}

void TreeSortModel::closeItem(const QString& objectId)
{
    if (d->treeModel)
        d->treeModel->closeItem(objectId);
}

bool TreeSortModel::lessThan(const QModelIndex& sourceLeft, const QModelIndex& sourceRight) const
{
    const QVariantMap a = recordAt(sourceLeft);
    const QVariantMap b = recordAt(sourceRight);
    const QString parentA = parentOf(a);
    const QString parentB = parentOf(b);
    if (parentA == parentB)
        return sameBranchSorting(a, b);
    const int levelA = levelOf(a);
    const int levelB = levelOf(b);
    if (levelA == levelB)
        return sameLevelSorting(a, b);
    if (parentB == idOf(a))
        return true;
    if (parentA == idOf(b))
        return false;
    return levelA > levelB ? leftLevelGreater(a, b, levelB) : rightLevelGreater(a, b, levelA);
}

bool TreeSortModel::sameBranchSorting(const QVariantMap& a, const QVariantMap& b) const
{
    const SortedListInfo& info = branchSortedListInfo(a);
    return SortingHelper::compareObjects(a, b, info.sortingType, info.groupByDate);
}

bool TreeSortModel::sameLevelSorting(const QVariantMap& a, const QVariantMap& b) const
{
    QVariantMap branchA = a;
    QVariantMap branchB = b;
    while (parentOf(branchA) != parentOf(branchB)) {
        const QVariantMap parentA = getObjectById(parentOf(branchA));
        const QVariantMap parentB = getObjectById(parentOf(branchB));
        if (parentA.isEmpty() || parentB.isEmpty())
            break;
        branchA = parentA;
        branchB = parentB;
    }
    return sameBranchSorting(branchA, branchB);
}

// A row deeper than `b` whose ancestor is `b` itself belongs below it, at any depth.
bool TreeSortModel::leftLevelGreater(const QVariantMap& a, const QVariantMap& b, int level) const
{
    const QVariantMap ancestor = ancestorAtLevel(a, level);
    if (idOf(ancestor) == idOf(b))
        return false;
    return sameLevelSorting(ancestor, b);
}

bool TreeSortModel::rightLevelGreater(const QVariantMap& a, const QVariantMap& b, int level) const
{
    const QVariantMap ancestor = ancestorAtLevel(b, level);
    if (idOf(ancestor) == idOf(a))
        return true;
    return sameLevelSorting(a, ancestor);
}

ListType TreeSortModel::listType() const
{
    return d->treeType == QLatin1String("projects") ? SortingNamespace::ListTypeFolder
                                                    : SortingNamespace::ListTypeContext;
}

QString TreeSortModel::branchListId(const QString& parentId) const
{
    if (!parentId.isEmpty())
        return parentId;
    return d->treeType == QLatin1String("projects") ? QStringLiteral("root_projects")
                                                    : QStringLiteral("root_contexts");
}

const SortedListInfo& TreeSortModel::branchSortedListInfo(const QVariantMap& object) const
{
    const auto info = d->sortedListInfos.constFind(branchListId(parentOf(object)));
    return info != d->sortedListInfos.constEnd() ? *info : d->unsortedList;
}

int TreeSortModel::manualBranchDecision(const QVariantMap& a, const QVariantMap& b) const
{
    const SortedListInfo& info = branchSortedListInfo(a);
    if (info.sortingType != SortingNamespace::ManualType)
        return NoDecision;
    const int positionA = info.orderHash.value(idOf(a), -1);
    const int positionB = info.orderHash.value(idOf(b), -1);
    if (positionA == -1 || positionB == -1)
        return NoDecision;
    return positionA < positionB ? LeftFirst : RightFirst;
}

bool TreeSortModel::compareWithinBranch(const QVariantMap& a, const QVariantMap& b) const
{
    if (branchSortedListInfo(a).sortingType == SortingNamespace::ManualType)
        return SortingHelper::compareObjects(a, b, SortingNamespace::TimestampAscType, true);
    return TreeSortModel::sameBranchSorting(a, b);
}

int TreeSortModel::levelOfVisibleRow(int row) const
{
    return levelOf(visibleRecord(row));
}

bool TreeSortModel::isFilteredObject(const QVariantMap& object, const QString& filteredObjectId)
{
    return !filteredObjectId.isEmpty() && idOf(object) == filteredObjectId;
}

bool TreeSortModel::chainPasses(const QString& firstId, const QString& soughtId, const QString& parentKey,
                                const std::function<QVariantMap(const QString&)>& objectById)
{
    QSet<QString> seen;
    QString id = firstId;
    while (!id.isEmpty() && !seen.contains(id)) {
        if (id == soughtId)
            return true;
        seen.insert(id);
        const QVariantMap object = objectById(id);
        if (object.isEmpty())
            break;
        id = object.value(parentKey).toString();
    }
    return false;
}

QVariantMap TreeSortModel::ancestorAtLevel(QVariantMap object, int level) const
{
    while (levelOf(object) > level) {
        const QVariantMap parent = getObjectById(parentOf(object));
        if (parent.isEmpty())
            break;
        object = parent;
    }
    return object;
}

// The row's place among the visible rows of its own level.
int TreeSortModel::sameLevelIndex(int row) const
{
    const int level = levelOfVisibleRow(row);
    int index = -1;
    for (int other = 0; other <= row; ++other) {
        if (levelOfVisibleRow(other) == level)
            ++index;
    }
    return index;
}

// A pass over all rows, as sort() and update() make, reads every list that holds rows anew. A change
// of some rows reads only the lists it brings in: the stored settings change only before a sort().
void TreeSortModel::readAllSortedListInfos()
{
    d->sortedListInfos.clear();
    readMissingSortedListInfos(0, d->treeModel->rowCount() - 1);
}

void TreeSortModel::readMissingSortedListInfos(int first, int last)
{
    for (int row = first; row <= last; ++row) {
        const QString listId = branchListId(parentOf(recordAt(d->treeModel->index(row))));
        if (!d->sortedListInfos.contains(listId))
            d->sortedListInfos.insert(listId, DataManager::instance()->getSortedListInfo(listId, listType()));
    }
}

#include "sortmodel.h"

#include "core/settings.h"
#include "models/listmodel.h"
#include "models/manualorder.h"
#include "store/datamanager.h"
#include "sync/sortinghelper.h"

using SortingNamespace::ListType;
using SortingNamespace::OrderHash;
using SortingNamespace::SortingType;

struct SortModel::Private
{
    SortingType sortingType = SortingNamespace::TimestampAscType;
    OrderHash order;
    // Kept with the rest of the list's settings; the order does not depend on it.
    QDateTime sortTimestamp;
    bool groupByDate = true;
    int activeObjectCount = 0;
    ExcludeType excludeType = ExcludeCompletedProjects;
    // Meaningless until setModelType names the list; an unnamed list reads as unsorted.
    ListType listType = SortingNamespace::ListTypeProject;
    QString listId;
};

namespace {

int stateOf(const QVariantMap& object)
{
    return object.value(QStringLiteral("STATE")).toInt();
}

bool isDeletedState(int state)
{
    return state == 1 || state == 3;
}

} // namespace

SortModel::SortModel(QObject* parent)
    : QSortFilterProxyModel(parent)
    , d(std::make_unique<Private>())
{
    setDynamicSortFilter(true);
}

SortModel::~SortModel() = default;

void SortModel::setExcludeCompletedObjectsType(ExcludeType type)
{
    d->excludeType = type;
}

SortModel::ExcludeType SortModel::excludeCompletedObjectsType() const
{
    return d->excludeType;
}

void SortModel::setModelType(ListType listType, const QString& listId)
{
    d->listType = listType;
    d->listId = listId;
    reloadSortedListInfo();
}

void SortModel::setSortedListInfo(const SortedListInfo& info)
{
    d->sortingType = info.sortingType;
    d->order = info.orderHash;
    d->sortTimestamp = info.lastChanged;
    d->groupByDate = info.groupByDate;
}

void SortModel::setSourceModel(QAbstractItemModel* sourceModel)
{
    if (!sourceModel)
        return;
    QSortFilterProxyModel::setSourceModel(sourceModel);
    checkHasActiveObjects();
    QSortFilterProxyModel::sort(0, Qt::AscendingOrder);
}

int SortModel::activeObjectCount() const
{
    return d->activeObjectCount;
}

void SortModel::switchToManualSortingMode()
{
    applyManualOrder(ManualOrder::fromRows(visibleIds()));
}

void SortModel::update()
{
    ListModel* source = listModel();
    if (!source)
        return;
    source->update();
    checkHasActiveObjects();
    emit updated();
}

void SortModel::moveItem(int oldIndex, int newIndex)
{
    if (oldIndex == newIndex)
        return;
    applyManualOrder(ManualOrder::afterMove(visibleIds(), oldIndex, newIndex));
    resortAllRows();
}

void SortModel::sort()
{
    reloadSortedListInfo();
    resortAllRows();
}

void SortModel::clear()
{
    if (ListModel* source = listModel())
        source->clear();
}

void SortModel::requestDeletion()
{
    if (sourceModel())
        sourceModel()->deleteLater();
    deleteLater();
}

QVariantList SortModel::getTaskList() const
{
    QVariantList tasks;
    for (int row = 0; row < rowCount(); ++row) {
        const QVariantMap object = visibleRecord(row);
        if (object.contains(QStringLiteral("PERIOD")))
            tasks.append(object);
    }
    return tasks;
}

QVariantList SortModel::getObjectList() const
{
    QVariantList objects;
    objects.reserve(rowCount());
    for (int row = 0; row < rowCount(); ++row)
        objects.append(visibleRecord(row));
    return objects;
}

int SortModel::getIndexByObjectId(const QString& objectId) const
{
    return visibleIds().indexOf(objectId);
}

QVariantMap SortModel::getObjectByIndex(int index) const
{
    return visibleRecord(index);
}

bool SortModel::lessThan(const QModelIndex& sourceLeft, const QModelIndex& sourceRight) const
{
    const QVariantMap a = recordAt(sourceLeft);
    const QVariantMap b = recordAt(sourceRight);

    const int stateA = stateOf(a);
    const int stateB = stateOf(b);
    if (stateA != stateB)
        return stateA < stateB;
    // The trash has an order of its own, whatever the list's settings say.
    if (isDeletedState(stateA))
        return SortingHelper::compareDeletedObjects(a, b);

    const int predefinedDecision = predefinedObjectsSort(a, b);
    if (predefinedDecision != NoDecision)
        return predefinedDecision == LeftFirst;

    // An object added after the last drag has no position and falls through to the rules below.
    if (sortsManually()) {
        const int positionA = manualPosition(a);
        const int positionB = manualPosition(b);
        if (positionA != -1 && positionB != -1)
            return positionA < positionB;
    }

    const int additionalDecision = doAdditionalSort(a, b);
    if (additionalDecision != NoDecision)
        return additionalDecision == LeftFirst;

    if (sortsManually())
        return SortingHelper::compareObjects(a, b, SortingNamespace::TimestampAscType, true);
    return SortingHelper::compareObjects(a, b, d->sortingType, d->groupByDate);
}

bool SortModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    if (completedObjectsShown())
        return true;
    return stateOf(recordAt(sourceModel()->index(sourceRow, 0, sourceParent))) != 2;
}

int SortModel::predefinedObjectsSort(const QVariantMap&, const QVariantMap&) const
{
    return NoDecision;
}

int SortModel::doAdditionalSort(const QVariantMap&, const QVariantMap&) const
{
    return NoDecision;
}

void SortModel::checkHasActiveObjects()
{
    const QAbstractItemModel* source = sourceModel();
    if (!source)
        return;
    int count = 0;
    for (int row = 0; row < source->rowCount(); ++row) {
        if (stateOf(recordAt(source->index(row, 0))) == 0)
            ++count;
    }
    setActiveObjectCount(count);
}

void SortModel::setActiveObjectCount(int count)
{
    if (d->activeObjectCount == count)
        return;
    d->activeObjectCount = count;
    emit activeObjectCountChanged(count);
}

QVariantMap SortModel::recordAt(const QModelIndex& sourceIndex)
{
    return sourceIndex.data(ListModel::listItemRole).toMap();
}

QVariantMap SortModel::visibleRecord(int row) const
{
    return index(row, 0).data(ListModel::listItemRole).toMap();
}

ListModel* SortModel::listModel() const
{
    return qobject_cast<ListModel*>(sourceModel());
}

QStringList SortModel::visibleIds() const
{
    QStringList ids;
    ids.reserve(rowCount());
    for (int row = 0; row < rowCount(); ++row)
        ids.append(visibleRecord(row).value(QStringLiteral("ID")).toString());
    return ids;
}

bool SortModel::sortsManually() const
{
    return d->sortingType == SortingNamespace::ManualType;
}

int SortModel::manualPosition(const QVariantMap& object) const
{
    return d->order.value(object.value(QStringLiteral("ID")).toString(), -1);
}

// Announcing every source row as changed makes the proxy filter and sort them all again.
void SortModel::resortAllRows()
{
    QAbstractItemModel* source = sourceModel();
    if (!source || source->rowCount() == 0)
        return;
    emit source->dataChanged(source->index(0, 0), source->index(source->rowCount() - 1, 0));
}

void SortModel::reloadSortedListInfo()
{
    setSortedListInfo(DataManager::instance()->getSortedListInfo(d->listId, d->listType));
}

void SortModel::storeManualOrder(const OrderHash& order)
{
    DataManager::instance()->setManualSortedList(d->listId, d->listType, order);
}

// The order is kept here as well as in the store, so a drag shows at once and lasts as long as the
// list, even where the store does not keep the order of that list.
void SortModel::applyManualOrder(const OrderHash& order)
{
    storeManualOrder(order);
    d->sortingType = SortingNamespace::ManualType;
    d->order = order;
}

bool SortModel::completedObjectsShown() const
{
    const Settings* settings = Settings::instance();
    return d->excludeType == ExcludeCompletedProjects ? settings->isShowCompletedProjects()
                                                      : settings->isShowCompletedTasks();
}

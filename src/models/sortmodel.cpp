#include "sortmodel.h"

#include "core/settings.h"
#include "models/listmodel.h"
#include "models/manualorder.h"
#include "models/sortkey.h"
#include "store/datamanager.h"
#include "sync/sortinghelper.h"

#include <QVector>

#include <algorithm>

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

    // One key per source row, in source order, kept in step with the source's signals; the handlers
    // that do so run before the proxy's own, so a sort never sees a stale key.
    QVector<SortKey> keys;
    // The manual position of each source row, -1 without one; empty unless sorting manually.
    QVector<int> manualPositions;
    // The "show completed" setting, read once for each pass of the filter.
    bool completedShown = true;
    // Set when something beside the rows changed the order: every row is sorted again.
    bool resortAll = false;
    // The source model, kept here for the checks of every comparison.
    const QAbstractItemModel* source = nullptr;
    bool flatSource = false;
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
    d->resortAll = true;
    refreshManualPositions();
}

void SortModel::setSourceModel(QAbstractItemModel* sourceModel)
{
    if (!sourceModel)
        return;
    if (QAbstractItemModel* previous = this->sourceModel())
        disconnect(previous, nullptr, this, nullptr);
    d->completedShown = completedObjectsShown();
    d->source = sourceModel;
    d->flatSource = qobject_cast<QAbstractListModel*>(sourceModel) != nullptr;
    connectKeyUpkeep(sourceModel);
    QSortFilterProxyModel::setSourceModel(sourceModel);
    takeOverDataChanges(sourceModel);
    rebuildKeys();
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
    const int leftRow = sourceLeft.row();
    const int rightRow = sourceRight.row();
    if (hasKey(sourceLeft) && hasKey(sourceRight)) {
        const SortKey* keys = d->keys.constData();
        if (!sortsManually())
            return lessThanByKeys(keys[leftRow], keys[rightRow], -1, -1);
        return lessThanByKeys(keys[leftRow], keys[rightRow], d->manualPositions.at(leftRow),
                              d->manualPositions.at(rightRow));
    }
    const SortKey a = keyOf(recordAt(sourceLeft));
    const SortKey b = keyOf(recordAt(sourceRight));
    return lessThanByKeys(a, b, manualPosition(a.record()), manualPosition(b.record()));
}

// An object added after the last drag has no position (-1) and falls through to the rules below.
bool SortModel::lessThanByKeys(const SortKey& a, const SortKey& b, int positionA, int positionB) const
{
    if (a.group() != b.group())
        return a.group() < b.group();
    if (a.state() != b.state())
        return a.state() < b.state();
    // The trash has an order of its own, whatever the list's settings say.
    if (isDeletedState(a.state()))
        return SortingHelper::compareDeletedObjects(a.record(), b.record());

    const int predefinedDecision = predefinedObjectsSort(a.record(), b.record());
    if (predefinedDecision != NoDecision)
        return predefinedDecision == LeftFirst;

    if (sortsManually() && positionA != -1 && positionB != -1)
        return positionA < positionB;

    const int additionalDecision = doAdditionalSort(a.record(), b.record());
    if (additionalDecision != NoDecision)
        return additionalDecision == LeftFirst;

    if (sortsManually())
        return a.lessThan(b, SortingNamespace::TimestampAscType, true);
    return a.lessThan(b, d->sortingType, d->groupByDate);
}

bool SortModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    if (d->completedShown)
        return true;
    const QModelIndex sourceIndex = sourceModel()->index(sourceRow, 0, sourceParent);
    if (hasKey(sourceIndex))
        return d->keys.at(sourceRow).state() != 2;
    return stateOf(recordAt(sourceIndex)) != 2;
}

int SortModel::predefinedObjectsSort(const QVariantMap&, const QVariantMap&) const
{
    return NoDecision;
}

int SortModel::doAdditionalSort(const QVariantMap&, const QVariantMap&) const
{
    return NoDecision;
}

int SortModel::sortGroupOf(const SortKey&) const
{
    return 0;
}

int SortModel::sortGroupOfSourceRow(int row) const
{
    if (d->keys.size() == sourceModel()->rowCount())
        return d->keys.at(row).group();
    return keyOfSourceRow(row).group();
}

void SortModel::checkHasActiveObjects()
{
    const QAbstractItemModel* source = sourceModel();
    if (!source)
        return;
    int count = 0;
    if (d->keys.size() == source->rowCount()) {
        count = int(std::count_if(d->keys.cbegin(), d->keys.cend(),
                                  [](const SortKey& key) { return key.state() == 0; }));
    } else {
        for (int row = 0; row < source->rowCount(); ++row) {
            if (stateOf(recordAt(source->index(row, 0))) == 0)
                ++count;
        }
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
    d->resortAll = true;
    emit source->dataChanged(source->index(0, 0), source->index(source->rowCount() - 1, 0));
}

// A list's rows have no parent to ask about.
bool SortModel::hasKey(const QModelIndex& sourceIndex) const
{
    return sourceIndex.model() == d->source && sourceIndex.row() < d->keys.size() &&
           (d->flatSource || !sourceIndex.parent().isValid());
}

SortKey SortModel::keyOf(const QVariantMap& record) const
{
    SortKey key(record);
    key.setGroup(sortGroupOf(key));
    return key;
}

// A list has made the key of each of its rows already.
SortKey SortModel::keyOfSourceRow(int row) const
{
    const ListModel* list = listModel();
    if (!list)
        return keyOf(recordAt(sourceModel()->index(row, 0)));
    SortKey key = list->keyAt(row);
    key.setGroup(sortGroupOf(key));
    return key;
}

int SortModel::manualPositionOfSourceRow(int row) const
{
    return d->order.value(d->keys.at(row).id(), -1);
}

void SortModel::refreshManualPositions()
{
    d->manualPositions.clear();
    if (!sortsManually())
        return;
    d->manualPositions.reserve(d->keys.size());
    for (int row = 0; row < d->keys.size(); ++row)
        d->manualPositions.append(manualPositionOfSourceRow(row));
}

void SortModel::rebuildKeys()
{
    d->completedShown = completedObjectsShown();
    d->keys.clear();
    const QAbstractItemModel* source = sourceModel();
    const int rows = source ? source->rowCount() : 0;
    d->keys.reserve(rows);
    for (int row = 0; row < rows; ++row)
        d->keys.append(keyOfSourceRow(row));
    refreshManualPositions();
}

// Connected before the proxy connects itself, so that these run first on every signal.
void SortModel::connectKeyUpkeep(QAbstractItemModel* source)
{
    d->keys.clear();
    connect(source, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex& parent, int first, int last) {
                if (parent.isValid())
                    return;
                d->completedShown = completedObjectsShown();
                for (int row = first; row <= last; ++row) {
                    d->keys.insert(row, keyOfSourceRow(row));
                    if (sortsManually())
                        d->manualPositions.insert(row, manualPositionOfSourceRow(row));
                }
            });
    connect(source, &QAbstractItemModel::rowsRemoved, this,
            [this](const QModelIndex& parent, int first, int last) {
                if (parent.isValid())
                    return;
                d->keys.remove(first, last - first + 1);
                if (sortsManually())
                    d->manualPositions.remove(first, last - first + 1);
            });
    connect(source, &QAbstractItemModel::modelReset, this, &SortModel::rebuildKeys);
    connect(source, &QAbstractItemModel::rowsMoved, this, &SortModel::rebuildKeys);
    connect(source, &QAbstractItemModel::layoutChanged, this, &SortModel::rebuildKeys);
}

// The list announces every row as changed at each refresh. Sorting and filtering all of them again
// would cost a full sort per refresh; instead only rows whose record really changed go to the
// proxy's own handling, and the views are told once that every row may read differently.
void SortModel::takeOverDataChanges(QAbstractItemModel* source)
{
    const char* const proxyHandler = SLOT(_q_sourceDataChanged(QModelIndex, QModelIndex, QVector<int>));
    disconnect(source, SIGNAL(dataChanged(QModelIndex, QModelIndex, QVector<int>)), this, proxyHandler);
    connect(source, &QAbstractItemModel::dataChanged, this, &SortModel::handleSourceDataChanged);
}

void SortModel::handleSourceDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                        const QVector<int>& roles)
{
    const bool shownBefore = d->completedShown;
    d->completedShown = completedObjectsShown();
    const bool everyRow = d->resortAll || shownBefore != d->completedShown;
    d->resortAll = false;
    if (!topLeft.isValid() || !bottomRight.isValid() || topLeft.parent().isValid() || everyRow) {
        if (everyRow)
            rebuildKeys();
        passDataChange(topLeft, bottomRight, roles);
        return;
    }
    const ListModel* list = listModel();
    int runStart = -1;
    for (int row = topLeft.row(); row <= bottomRight.row() + 1; ++row) {
        const bool changed = row <= bottomRight.row() && refreshKey(list, row);
        if (changed && runStart < 0)
            runStart = row;
        if (!changed && runStart >= 0) {
            passDataChange(sourceIndex(runStart, topLeft.column()),
                           sourceIndex(row - 1, bottomRight.column()), roles);
            runStart = -1;
        }
    }
    if (rowCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), roles);
}

void SortModel::passDataChange(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                               const QVector<int>& roles)
{
    QMetaObject::invokeMethod(this, "_q_sourceDataChanged", Qt::DirectConnection, Q_ARG(QModelIndex, topLeft),
                              Q_ARG(QModelIndex, bottomRight), Q_ARG(QVector<int>, roles));
}

QModelIndex SortModel::sourceIndex(int row, int column) const
{
    return sourceModel()->index(row, column);
}

// Takes the row's record afresh; true when it differs from the one the key was made from.
bool SortModel::refreshKey(const ListModel* list, int row)
{
    if (row >= d->keys.size())
        return true;
    // The list's own map is read in place: a copy would touch every row's shared data.
    const bool current =
        list ? isKeyCurrent(row, list->rowAt(row)) : isKeyCurrent(row, recordAt(sourceIndex(row, 0)));
    if (current)
        return false;
    d->keys[row] = keyOfSourceRow(row);
    if (sortsManually())
        d->manualPositions[row] = manualPositionOfSourceRow(row);
    return true;
}

bool SortModel::isKeyCurrent(int row, const QVariantMap& record) const
{
    const QVariantMap& known = d->keys.at(row).record();
    return record.isSharedWith(known) || record == known;
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

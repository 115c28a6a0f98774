#include "treemodel.h"

#include "store/objectkeys.h"

#include <QSet>
#include <QStringList>

#include <algorithm>

#include <utility>

namespace {

QString idOf(const QVariantMap& object)
{
    return object.value(idKey).toString();
}

int levelOf(const QVariantMap& object)
{
    return object.value(levelKey).toInt();
}

bool hasUncompletedChild(const QList<QVariantMap>& children)
{
    return std::any_of(children.cbegin(), children.cend(),
                       [](const QVariantMap& child) { return child.value(stateKey).toInt() != 2; });
}

} // namespace

struct TreeModel::Private
{
    explicit Private(DataFunction dataFunction)
        : dataFunction(std::move(dataFunction))
    {}

    const DataFunction dataFunction;
    QList<QVariantMap> rows;
    // Parallel to rows.
    QStringList ids;
    QSet<QString> openIds;
    QHash<QString, DataObject> objectById;
    QList<DataObject> rootObjects;
};

TreeModel::TreeModel(DataFunction dataFunction, QObject* parent)
    : QAbstractListModel(parent)
    , d(std::make_unique<Private>(std::move(dataFunction)))
{
    update();
}

TreeModel::~TreeModel() = default;

int TreeModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : d->rows.size();
}

QVariant TreeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= d->rows.size())
        return QVariant();
    const QVariantMap& object = d->rows.at(index.row());
    switch (role) {
    case treeItemRole:
        return object;
    case hasChildrenRole:
        return hasUncompletedChild(childrenOf(object));
    case isItemOpenedRole:
        return d->openIds.contains(d->ids.at(index.row()));
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> TreeModel::roleNames() const
{
    return {{treeItemRole, QByteArrayLiteral("treeItemRole")},
            {hasChildrenRole, QByteArrayLiteral("hasChildrenRole")},
            {isItemOpenedRole, QByteArrayLiteral("isItemOpenedRole")}};
}

void TreeModel::update()
{
    TreeHierarchy hierarchy = d->dataFunction();
    d->objectById = std::move(hierarchy.objectById);
    d->rootObjects = std::move(hierarchy.rootObjects);

    if (d->rows.isEmpty()) {
        insertRows(0, d->rootObjects);
    } else {
        removeDetachedRows();
        refreshRemainingRows();
        insertNewRoots();
    }
    insertNewChildrenOfOpenRows();
    emit updated();
}

QVariantMap TreeModel::getObjectById(const QString& id) const
{
    return d->objectById.value(id);
}

void TreeModel::requestDeletion()
{
    deleteLater();
}

void TreeModel::clear()
{
    d->openIds.clear();
    if (d->rows.isEmpty())
        return;
    beginRemoveRows(QModelIndex(), 0, d->rows.size() - 1);
    d->rows.clear();
    d->ids.clear();
    endRemoveRows();
}

void TreeModel::openItem(const QString& objectId)
{
    const int row = rowOf(objectId);
    if (row == -1 || d->openIds.contains(objectId))
        return;
    d->openIds.insert(objectId);
    emitRowChanged(row);
    insertRows(row + 1, childrenOf(d->rows.at(row)));
}

void TreeModel::closeItem(const QString& objectId)
{
    const int row = rowOf(objectId);
    if (row == -1 || !d->openIds.remove(objectId))
        return;
    const int size = subtreeSize(row);
    if (size > 0) {
        beginRemoveRows(QModelIndex(), row + 1, row + size);
        for (int removed = row + size; removed > row; --removed) {
            d->openIds.remove(d->ids.at(removed));
            d->rows.removeAt(removed);
            d->ids.removeAt(removed);
        }
        endRemoveRows();
    }
    emitRowChanged(row);
}

QList<QVariantMap> TreeModel::childrenOf(const QVariantMap& object)
{
    return object.value(childrenKey).value<QList<QVariantMap>>();
}

int TreeModel::rowOf(const QString& id) const
{
    return d->ids.indexOf(id);
}

// The rows below `row` that are deeper than it: its visible descendants.
int TreeModel::subtreeSize(int row) const
{
    const int level = levelOf(d->rows.at(row));
    int next = row + 1;
    while (next < d->rows.size() && levelOf(d->rows.at(next)) > level)
        ++next;
    return next - row - 1;
}

void TreeModel::insertRows(int row, const QList<QVariantMap>& objects)
{
    if (objects.isEmpty())
        return;
    beginInsertRows(QModelIndex(), row, row + objects.size() - 1);
    for (int offset = 0; offset < objects.size(); ++offset) {
        d->rows.insert(row + offset, objects.at(offset));
        d->ids.insert(row + offset, idOf(objects.at(offset)));
    }
    endInsertRows();
}

void TreeModel::removeRowsWithSubtrees(int first, int count)
{
    beginRemoveRows(QModelIndex(), first, first + count - 1);
    for (int row = first + count - 1; row >= first; --row) {
        d->openIds.remove(d->ids.at(row));
        d->rows.removeAt(row);
        d->ids.removeAt(row);
    }
    endRemoveRows();
}

void TreeModel::emitRowChanged(int row)
{
    const QModelIndex changed = index(row);
    emit dataChanged(changed, changed);
}

// Rows whose object is gone or has moved to another parent leave with everything below them. A moved
// object comes back under its new parent in the later steps, if that parent is shown and open.
void TreeModel::removeDetachedRows()
{
    QSet<QString> rootIds;
    for (const QVariantMap& root : qAsConst(d->rootObjects))
        rootIds.insert(idOf(root));

    QVector<QPair<int, int>> detachedRanges;
    // The row of the nearest open ancestor at each level, for the row being looked at.
    QVector<int> ancestorRows;
    int row = 0;
    while (row < d->rows.size()) {
        const int level = levelOf(d->rows.at(row));
        while (ancestorRows.size() > level)
            ancestorRows.removeLast();
        const bool detached =
            level == 0 ? !rootIds.contains(d->ids.at(row))
                       : ancestorRows.size() != level || isDetached(row, d->rows.at(ancestorRows.last()));
        if (detached) {
            const int count = 1 + subtreeSize(row);
            detachedRanges.append({row, count});
            row += count;
        } else {
            ancestorRows.append(row);
            ++row;
        }
    }
    for (auto range = detachedRanges.crbegin(); range != detachedRanges.crend(); ++range)
        removeRowsWithSubtrees(range->first, range->second);
}

bool TreeModel::isDetached(int row, const QVariantMap& parent) const
{
    const auto fresh = d->objectById.constFind(d->ids.at(row));
    return fresh == d->objectById.constEnd() || fresh->value(parentKey).toString() != idOf(parent);
}

// The pseudo-objects are roots that the hash does not know.
void TreeModel::refreshRemainingRows()
{
    QHash<QString, QVariantMap> rootById;
    for (const QVariantMap& root : qAsConst(d->rootObjects))
        rootById.insert(idOf(root), root);
    for (int row = 0; row < d->rows.size(); ++row) {
        const QString& id = d->ids.at(row);
        const auto fresh = d->objectById.constFind(id);
        d->rows[row] = fresh != d->objectById.constEnd() ? *fresh : rootById.value(id, d->rows.at(row));
    }
    if (!d->rows.isEmpty())
        emit dataChanged(index(0), index(d->rows.size() - 1));
}

void TreeModel::insertNewRoots()
{
    const QSet<QString> shown(d->ids.cbegin(), d->ids.cend());
    QList<QVariantMap> newRoots;
    for (const QVariantMap& root : qAsConst(d->rootObjects)) {
        if (!shown.contains(idOf(root)))
            newRoots.append(root);
    }
    insertRows(d->rows.size(), newRoots);
}

// New children go to the end of their parent's subtree; the sort model above puts them in place.
void TreeModel::insertNewChildrenOfOpenRows()
{
    QSet<QString> shown(d->ids.cbegin(), d->ids.cend());
    for (const QString& openId : qAsConst(d->openIds)) {
        const auto object = d->objectById.constFind(openId);
        const int row = rowOf(openId);
        if (object == d->objectById.constEnd() || row == -1)
            continue;
        QList<QVariantMap> newChildren;
        for (const QVariantMap& child : childrenOf(*object)) {
            if (!shown.contains(idOf(child)))
                newChildren.append(child);
        }
        for (const QVariantMap& child : qAsConst(newChildren))
            shown.insert(idOf(child));
        insertRows(row + 1 + subtreeSize(row), newChildren);
    }
}

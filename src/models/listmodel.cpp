#include "listmodel.h"

#include "store/objectkeys.h"

#include <QSet>
#include <QVector>

#include <algorithm>
#include <utility>

namespace {

QString idOf(const QVariantMap& record)
{
    return record.value(idKey).toString();
}

int stateOf(const QVariantMap& record)
{
    return record.value(stateKey).toInt();
}

// Doubles as the section key on mixed lists, so a completed object of any kind reads "completed".
QString objectTypeOf(const QVariantMap& record)
{
    if (stateOf(record) == 2)
        return QStringLiteral("completed");
    if (record.contains(QStringLiteral("PERIOD")))
        return QStringLiteral("task");
    const auto folder = record.constFind(QStringLiteral("FOLDER"));
    if (folder == record.constEnd())
        return QStringLiteral("context");
    return folder->toBool() ? QStringLiteral("folder") : QStringLiteral("project");
}

// Compares hashes first: sorting numbers is much cheaper than filling a set with the texts, and an
// answer with a repeat is rare.
bool repeatsAnId(const QVector<SortKey>& keys)
{
    QVector<uint> hashes;
    hashes.reserve(keys.size());
    for (const SortKey& key : keys)
        hashes.append(qHash(key.id()));
    std::sort(hashes.begin(), hashes.end());
    if (std::adjacent_find(hashes.cbegin(), hashes.cend()) == hashes.cend())
        return false;
    QSet<QString> ids;
    for (const SortKey& key : keys)
        ids.insert(key.id());
    return ids.size() != keys.size();
}

} // namespace

ListModel::ListModel(DataFunction dataFunction, QObject* parent)
    : ListModel(std::make_unique<ListModelPrivate>(std::move(dataFunction)), parent)
{}

ListModel::ListModel(std::unique_ptr<ListModelPrivate> data, QObject* parent)
    : QAbstractListModel(parent)
    , d(std::move(data))
{
    update();
}

ListModel::~ListModel() = default;

// A sort asks for two indexes per comparison; this answers without the virtual calls of the
// generic checks.
QModelIndex ListModel::index(int row, int column, const QModelIndex& parent) const
{
    const bool valid = row >= 0 && row < d->rows.size() && column == 0 && !parent.isValid();
    return valid ? createIndex(row, column) : QModelIndex();
}

int ListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : d->rows.size();
}

QVariant ListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= d->rows.size())
        return QVariant();
    const SortKey& key = d->rows.at(index.row());
    switch (role) {
    case listItemRole:
        return key.record();
    case stateRole:
        return key.state();
    case objectTypeRole:
        return objectTypeOf(key.record());
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> ListModel::roleNames() const
{
    return {{listItemRole, QByteArrayLiteral("listItemRole")},
            {stateRole, QByteArrayLiteral("stateRole")},
            {objectTypeRole, QByteArrayLiteral("objectTypeRole")}};
}

void ListModel::update()
{
    prepareUpdate();
    const QList<QVariantMap> fresh = d->dataFunction();
    if (d->rows.isEmpty()) {
        fillEmptyList(fresh);
    } else if (!refreshRowsInPlace(fresh) && !mergeByIdentity(fresh) && !mergeUniqueRecords(fresh)) {
        removeVanishedAndRestatedRows(fresh);
        mergeFreshRecords(fresh);
    }

    emit dataChanged(index(0), index(d->rows.size() - 1));
    emit updated();
}

void ListModel::requestDeletion()
{
    deleteLater();
}

void ListModel::clear()
{
    if (d->rows.isEmpty())
        return;
    beginRemoveRows(QModelIndex(), 0, d->rows.size() - 1);
    d->rows.clear();
    d->rowIds.clear();
    d->rowIdsKept = false;
    endRemoveRows();
}

void ListModel::appendRow(SortKey key)
{
    const int newRow = d->rows.size();
    beginInsertRows(QModelIndex(), newRow, newRow);
    if (d->rowIdsKept)
        d->rowIds.insert(key.id());
    d->rows.append(std::move(key));
    endInsertRows();
}

void ListModel::replaceRow(int row, const QVariantMap& record)
{
    d->rows[row] = SortKey(record);
}

void ListModel::removeRowAt(int row)
{
    beginRemoveRows(QModelIndex(), row, row);
    if (d->rowIdsKept)
        d->rowIds.remove(d->rows.at(row).id());
    d->rows.remove(row);
    endRemoveRows();
}

void ListModel::prepareUpdate() {}

const QVariantMap& ListModel::rowAt(int row) const
{
    return d->rows.at(row).record();
}

const SortKey& ListModel::keyAt(int row) const
{
    return d->rows.at(row);
}

// The first fill: every record is new, so there is nothing to diff. An answer that repeats an id
// goes to the general merge, which keeps the first of each.
void ListModel::fillEmptyList(const QList<QVariantMap>& fresh)
{
    QVector<SortKey> keys;
    keys.reserve(fresh.size());
    for (const QVariantMap& record : fresh)
        keys.append(SortKey(record));
    if (repeatsAnId(keys)) {
        mergeFreshRecords(fresh);
        return;
    }
    d->rows.reserve(keys.size());
    for (SortKey& key : keys) {
        const int newRow = d->rows.size();
        beginInsertRows(QModelIndex(), newRow, newRow);
        d->rows.append(std::move(key));
        endInsertRows();
    }
}

const QSet<QString>& ListModel::rowIds()
{
    if (!d->rowIdsKept) {
        d->rowIds.reserve(d->rows.size());
        for (const SortKey& row : qAsConst(d->rows))
            d->rowIds.insert(row.id());
        d->rowIdsKept = true;
    }
    return d->rowIds;
}

// The common refresh: the answer holds the rows' ids in the rows' order and no state changed. The
// diff below would then only replace maps in place, which this does without building its hashes.
bool ListModel::refreshRowsInPlace(const QList<QVariantMap>& fresh)
{
    if (fresh.size() != d->rows.size())
        return false;
    for (int row = 0; row < fresh.size(); ++row) {
        const SortKey& current = d->rows.at(row);
        const QVariantMap& record = fresh.at(row);
        if (!current.record().isSharedWith(record) &&
            (current.id() != idOf(record) || current.state() != stateOf(record)))
            return false;
    }
    for (int row = 0; row < fresh.size(); ++row) {
        if (!d->rows.at(row).record().isSharedWith(fresh.at(row)))
            replaceRow(row, fresh.at(row));
    }
    return true;
}

// A refresh after a few changes, when the store handed back the same maps for the unchanged objects:
// walking rows and answer side by side pairs most rows by the identity of their maps, skipping over
// a changed, new or moved record here and there. Only those few are matched by id. Gives up, leaving
// the work to the diffs below, when the two lists differ in more than a few places or an id repeats.
bool ListModel::mergeByIdentity(const QList<QVariantMap>& fresh)
{
    const int maximumUnpaired = 32;
    QVector<int> unpairedRows;
    QVector<int> unpairedPositions;
    // Rows paired with a new map of the same object, such as a repeating task's occurrence.
    QVector<QPair<int, int>> renewedRows;
    int row = 0;
    int position = 0;
    while (row < d->rows.size() && position < fresh.size()) {
        const SortKey& current = d->rows.at(row);
        const QVariantMap& record = fresh.at(position);
        if (current.record().isSharedWith(record)) {
            ++row;
            ++position;
        } else if (current.id() == idOf(record) && current.state() == stateOf(record)) {
            renewedRows.append({row++, position++});
        } else if (position + 1 < fresh.size() && current.record().isSharedWith(fresh.at(position + 1))) {
            unpairedPositions.append(position++);
        } else if (row + 1 < d->rows.size() &&
                   d->rows.at(row + 1).record().isSharedWith(fresh.at(position))) {
            unpairedRows.append(row++);
        } else {
            unpairedRows.append(row++);
            unpairedPositions.append(position++);
        }
        if (unpairedRows.size() > maximumUnpaired || unpairedPositions.size() > maximumUnpaired)
            return false;
    }
    for (; row < d->rows.size(); ++row)
        unpairedRows.append(row);
    for (; position < fresh.size(); ++position)
        unpairedPositions.append(position);
    if (unpairedRows.size() > maximumUnpaired || unpairedPositions.size() > maximumUnpaired)
        return false;

    QHash<QString, int> unpairedRowById;
    for (int unpairedRow : qAsConst(unpairedRows))
        unpairedRowById.insert(d->rows.at(unpairedRow).id(), unpairedRow);
    // Where each unpaired record goes: a row it refreshes, or -1 for a new row at the end.
    QVector<int> rowOfPosition;
    QSet<QString> unpairedIds;
    for (int unpairedPosition : qAsConst(unpairedPositions)) {
        const QVariantMap& record = fresh.at(unpairedPosition);
        const QString id = idOf(record);
        const int knownRow = unpairedRowById.value(id, -1);
        // An id of a paired row, or one seen twice here, repeats in the answer.
        if (unpairedIds.contains(id) || (knownRow < 0 && rowIds().contains(id)))
            return false;
        unpairedIds.insert(id);
        const bool restated = knownRow >= 0 && d->rows.at(knownRow).state() != stateOf(record);
        rowOfPosition.append(restated ? -1 : knownRow);
    }

    for (const auto& renewed : qAsConst(renewedRows))
        replaceRow(renewed.first, fresh.at(renewed.second));
    QVector<int> keptRows = rowOfPosition;
    for (auto unpairedRow = unpairedRows.crbegin(); unpairedRow != unpairedRows.crend(); ++unpairedRow) {
        if (!keptRows.contains(*unpairedRow))
            removeRowAt(*unpairedRow);
    }
    for (int index = 0; index < unpairedPositions.size(); ++index) {
        const QVariantMap& record = fresh.at(unpairedPositions.at(index));
        const int knownRow = rowOfPosition.at(index);
        if (knownRow < 0) {
            appendRow(SortKey(record));
            continue;
        }
        // Rows below a removed one moved up.
        const int removedAbove =
            int(std::count_if(unpairedRows.cbegin(), unpairedRows.cend(), [&](int removed) {
                return removed < knownRow && !keptRows.contains(removed);
            }));
        replaceRow(knownRow - removedAbove, record);
    }
    return true;
}

// The diff below for an answer without repeated ids, with one hash instead of two: each row learns
// the position of its record in the answer, and the answer then needs no lookup of its own.
bool ListModel::mergeUniqueRecords(const QList<QVariantMap>& fresh)
{
    QHash<QString, int> positionById;
    positionById.reserve(fresh.size());
    for (int position = 0; position < fresh.size(); ++position)
        positionById.insert(idOf(fresh.at(position)), position);
    if (positionById.size() != fresh.size())
        return false;

    QVector<int> positionOfRow;
    positionOfRow.reserve(d->rows.size());
    for (const SortKey& current : qAsConst(d->rows)) {
        const int position = positionById.value(current.id(), -1);
        const bool restated = position >= 0 && stateOf(fresh.at(position)) != current.state();
        positionOfRow.append(restated ? -1 : position);
    }
    for (int row = d->rows.size() - 1; row >= 0; --row) {
        if (positionOfRow.at(row) >= 0)
            continue;
        positionOfRow.remove(row);
        removeRowAt(row);
    }

    QVector<int> rowOfPosition(fresh.size(), -1);
    for (int row = 0; row < positionOfRow.size(); ++row)
        rowOfPosition[positionOfRow.at(row)] = row;
    for (int position = 0; position < fresh.size(); ++position) {
        const QVariantMap& record = fresh.at(position);
        const int row = rowOfPosition.at(position);
        if (row < 0) {
            appendRow(SortKey(record));
        } else if (!d->rows.at(row).record().isSharedWith(record)) {
            replaceRow(row, record);
        }
    }
    return true;
}

// A record whose state changed leaves its row here and comes back at the end, which is what lets a
// view animate a completed task away from its place.
void ListModel::removeVanishedAndRestatedRows(const QList<QVariantMap>& fresh)
{
    QHash<QString, int> freshStateById;
    freshStateById.reserve(fresh.size());
    for (const QVariantMap& record : fresh)
        freshStateById.insert(idOf(record), stateOf(record));

    QVector<int> rowsToRemove;
    for (int row = 0; row < d->rows.size(); ++row) {
        const SortKey& current = d->rows.at(row);
        const auto freshState = freshStateById.constFind(current.id());
        if (freshState == freshStateById.constEnd() || *freshState != current.state())
            rowsToRemove.append(row);
    }
    for (auto row = rowsToRemove.crbegin(); row != rowsToRemove.crend(); ++row)
        removeRowAt(*row);
}

// Known records are refreshed in place without a signal of their own; the dataChanged over all rows
// that ends update() covers them. New records are appended one by one. An id seen twice in one answer
// refreshes the row its first sighting made, so a repeat can never grow the list.
void ListModel::mergeFreshRecords(const QList<QVariantMap>& fresh)
{
    QHash<QString, int> rowById;
    rowById.reserve(d->rows.size());
    for (int row = 0; row < d->rows.size(); ++row)
        rowById.insert(d->rows.at(row).id(), row);

    for (const QVariantMap& record : fresh) {
        const QString id = idOf(record);
        const auto knownRow = rowById.constFind(id);
        if (knownRow == rowById.constEnd()) {
            rowById.insert(id, d->rows.size());
            appendRow(SortKey(record));
        } else if (!d->rows.at(*knownRow).record().isSharedWith(record)) {
            replaceRow(*knownRow, record);
        }
    }
}

#include "listmodel.h"

#include <QVector>

#include <utility>

namespace {

QString idOf(const QVariantMap& record)
{
    return record.value(QStringLiteral("ID")).toString();
}

int stateOf(const QVariantMap& record)
{
    return record.value(QStringLiteral("STATE")).toInt();
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

int ListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : d->rows.size();
}

QVariant ListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= d->rows.size())
        return QVariant();
    const QVariantMap& record = d->rows.at(index.row());
    switch (role) {
    case listItemRole:
        return record;
    case stateRole:
        return stateOf(record);
    case objectTypeRole:
        return objectTypeOf(record);
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
    if (!refreshRowsInPlace(fresh) && !mergeUniqueRecords(fresh)) {
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
    endRemoveRows();
}

void ListModel::prepareUpdate() {}

const QVariantMap& ListModel::rowAt(int row) const
{
    return d->rows.at(row);
}

// The common refresh: the answer holds the rows' ids in the rows' order and no state changed. The
// diff below would then only replace maps in place, which this does without building its hashes.
bool ListModel::refreshRowsInPlace(const QList<QVariantMap>& fresh)
{
    if (fresh.size() != d->rows.size())
        return false;
    for (int row = 0; row < fresh.size(); ++row) {
        const QVariantMap& current = d->rows.at(row);
        const QVariantMap& record = fresh.at(row);
        if (!current.isSharedWith(record) &&
            (idOf(current) != idOf(record) || stateOf(current) != stateOf(record)))
            return false;
    }
    for (int row = 0; row < fresh.size(); ++row) {
        if (!d->rows.at(row).isSharedWith(fresh.at(row)))
            d->rows[row] = fresh.at(row);
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
    for (const QVariantMap& current : qAsConst(d->rows)) {
        const int position = positionById.value(idOf(current), -1);
        const bool restated = position >= 0 && stateOf(fresh.at(position)) != stateOf(current);
        positionOfRow.append(restated ? -1 : position);
    }
    for (int row = d->rows.size() - 1; row >= 0; --row) {
        if (positionOfRow.at(row) >= 0)
            continue;
        beginRemoveRows(QModelIndex(), row, row);
        d->rows.removeAt(row);
        positionOfRow.remove(row);
        endRemoveRows();
    }

    QVector<int> rowOfPosition(fresh.size(), -1);
    for (int row = 0; row < positionOfRow.size(); ++row)
        rowOfPosition[positionOfRow.at(row)] = row;
    for (int position = 0; position < fresh.size(); ++position) {
        const QVariantMap& record = fresh.at(position);
        const int row = rowOfPosition.at(position);
        if (row < 0) {
            const int newRow = d->rows.size();
            beginInsertRows(QModelIndex(), newRow, newRow);
            d->rows.append(record);
            endInsertRows();
        } else if (!d->rows.at(row).isSharedWith(record)) {
            d->rows[row] = record;
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
        const QVariantMap& current = d->rows.at(row);
        const auto freshState = freshStateById.constFind(idOf(current));
        if (freshState == freshStateById.constEnd() || *freshState != stateOf(current))
            rowsToRemove.append(row);
    }
    for (auto row = rowsToRemove.crbegin(); row != rowsToRemove.crend(); ++row) {
        beginRemoveRows(QModelIndex(), *row, *row);
        d->rows.removeAt(*row);
        endRemoveRows();
    }
}

// Known records are refreshed in place without a signal of their own; the dataChanged over all rows
// that ends update() covers them. New records are appended one by one. An id seen twice in one answer
// refreshes the row its first sighting made, so a repeat can never grow the list.
void ListModel::mergeFreshRecords(const QList<QVariantMap>& fresh)
{
    QHash<QString, int> rowById;
    rowById.reserve(d->rows.size());
    for (int row = 0; row < d->rows.size(); ++row)
        rowById.insert(idOf(d->rows.at(row)), row);

    for (const QVariantMap& record : fresh) {
        const auto knownRow = rowById.constFind(idOf(record));
        if (knownRow == rowById.constEnd()) {
            const int newRow = d->rows.size();
            beginInsertRows(QModelIndex(), newRow, newRow);
            d->rows.append(record);
            endInsertRows();
            rowById.insert(idOf(record), newRow);
        } else if (!d->rows.at(*knownRow).isSharedWith(record)) {
            d->rows[*knownRow] = record;
        }
    }
}

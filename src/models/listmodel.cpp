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
    removeVanishedAndRestatedRows(fresh);
    mergeFreshRecords(fresh);

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

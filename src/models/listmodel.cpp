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
    const QVector<int> rowOfFresh = removeVanishedAndRestatedRows(fresh);
    mergeFreshRecords(fresh, rowOfFresh);

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
// view animate a completed task away from its place. Answers, for each fresh record, the row that
// still shows it once the removals are done, or -1.
QVector<int> ListModel::removeVanishedAndRestatedRows(const QList<QVariantMap>& fresh)
{
    QHash<QString, int> freshIndexById;
    freshIndexById.reserve(fresh.size());
    for (int freshIndex = 0; freshIndex < fresh.size(); ++freshIndex)
        freshIndexById.insert(idOf(fresh.at(freshIndex)), freshIndex);

    QVector<int> rowOfFresh(fresh.size(), -1);
    QVector<int> rowsToRemove;
    for (int row = 0; row < d->rows.size(); ++row) {
        const QVariantMap& current = d->rows.at(row);
        const auto freshIndex = freshIndexById.constFind(idOf(current));
        if (freshIndex == freshIndexById.constEnd() || stateOf(fresh.at(*freshIndex)) != stateOf(current))
            rowsToRemove.append(row);
        else
            rowOfFresh[*freshIndex] = row - rowsToRemove.size();
    }
    for (auto row = rowsToRemove.crbegin(); row != rowsToRemove.crend(); ++row) {
        beginRemoveRows(QModelIndex(), *row, *row);
        d->rows.removeAt(*row);
        endRemoveRows();
    }
    return rowOfFresh;
}

// Known records are refreshed in place without a signal of their own; the dataChanged over all rows
// that ends update() covers them. New records are appended one by one.
void ListModel::mergeFreshRecords(const QList<QVariantMap>& fresh, const QVector<int>& rowOfFresh)
{
    for (int freshIndex = 0; freshIndex < fresh.size(); ++freshIndex) {
        const QVariantMap& record = fresh.at(freshIndex);
        const int row = rowOfFresh.at(freshIndex);
        if (row == -1) {
            const int newRow = d->rows.size();
            beginInsertRows(QModelIndex(), newRow, newRow);
            d->rows.append(record);
            endInsertRows();
        } else if (!d->rows.at(row).isSharedWith(record)) {
            d->rows[row] = record;
        }
    }
}

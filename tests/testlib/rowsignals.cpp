#include "rowsignals.h"

namespace {

QAbstractItemModel* withLayoutTypesRegistered(QAbstractItemModel* model)
{
    qRegisterMetaType<QList<QPersistentModelIndex>>();
    qRegisterMetaType<QAbstractItemModel::LayoutChangeHint>();
    return model;
}

} // namespace

RowSignals::RowSignals(QAbstractItemModel* model)
    : removed(withLayoutTypesRegistered(model), &QAbstractItemModel::rowsRemoved)
    , inserted(model, &QAbstractItemModel::rowsInserted)
    , moved(model, &QAbstractItemModel::rowsMoved)
    , reset(model, &QAbstractItemModel::modelReset)
    , layoutChanged(model, &QAbstractItemModel::layoutChanged)
    , dataChanged(model, &QAbstractItemModel::dataChanged)
{}

int RowSignals::structuralCount() const
{
    return removed.count() + inserted.count() + moved.count() + reset.count() + layoutChanged.count();
}

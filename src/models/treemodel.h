#pragma once

#include "store/dataobject.h"

#include <QAbstractListModel>
#include <QVariantMap>

#include <functional>
#include <memory>

// A tree of projects or contexts shown as a flat list with indentation: the children of an open row
// follow it. A refresh re-reads the whole hierarchy and keeps which rows are open.
class TreeModel : public QAbstractListModel
{
    Q_OBJECT

public:
    using DataFunction = std::function<TreeHierarchy()>;

    enum Roles { treeItemRole = Qt::UserRole + 1, hasChildrenRole, isItemOpenedRole };

    // Filled at once from the data function.
    explicit TreeModel(DataFunction dataFunction, QObject* parent = nullptr);
    ~TreeModel() override;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

    Q_INVOKABLE void update();
    // The object as the last refresh read it; an empty map for an unknown ID.
    Q_INVOKABLE QVariantMap getObjectById(const QString& id) const;
    Q_INVOKABLE void requestDeletion();
    Q_INVOKABLE void clear();

public slots:
    // Shows the row's direct children below it; opening goes one level at a time.
    void openItem(const QString& objectId);
    // Hides the row's whole subtree and forgets which rows inside it were open.
    void closeItem(const QString& objectId);

signals:
    void updated();

protected:
    static QList<QVariantMap> childrenOf(const QVariantMap& object);

private:
    int rowOf(const QString& id) const;
    int subtreeSize(int row) const;
    void insertRows(int row, const QList<QVariantMap>& objects);
    void removeRowsWithSubtrees(int first, int count);
    void emitRowChanged(int row);
    void removeDetachedRows();
    bool isDetached(int row, const QVariantMap& parent) const;
    void refreshRemainingRows();
    void insertNewRoots();
    void insertNewChildrenOfOpenRows();

    struct Private;
    std::unique_ptr<Private> d;
};

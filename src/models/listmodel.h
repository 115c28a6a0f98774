#pragma once

#include "models/listmodelprivate.h"

#include <QAbstractListModel>
#include <QVariantMap>
#include <QVector>

#include <memory>

// The flat model under every list. It keeps a copy of what its data function returns and refreshes
// by re-running the function and turning the difference into row signals, so that views keep their
// position and selection while the list changes beneath them. Order is left to the sort model above.
class ListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    using DataFunction = ListModelPrivate::DataFunction;

    enum Roles { listItemRole = Qt::UserRole + 1, stateRole, objectTypeRole };

    // Filled at once from the data function.
    explicit ListModel(DataFunction dataFunction, QObject* parent = nullptr);
    ~ListModel() override;

    QModelIndex index(int row, int column = 0, const QModelIndex& parent = QModelIndex()) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

    Q_INVOKABLE void update();
    Q_INVOKABLE void requestDeletion();
    Q_INVOKABLE void clear();

signals:
    void updated();

protected:
    // Reads the rows directly when it follows their changes.
    friend class SortModel;

    ListModel(std::unique_ptr<ListModelPrivate> data, QObject* parent);

    // Runs first thing in every update().
    virtual void prepareUpdate();

    // The record of a row and its key; the caller checks the index.
    const QVariantMap& rowAt(int row) const;
    const SortKey& keyAt(int row) const;

    const std::unique_ptr<ListModelPrivate> d;

private:
    void fillEmptyList(const QList<QVariantMap>& fresh);
    const QSet<QString>& rowIds();
    bool refreshRowsInPlace(const QList<QVariantMap>& fresh);
    bool mergeByIdentity(const QList<QVariantMap>& fresh);
    void appendRow(SortKey key);
    void replaceRow(int row, const QVariantMap& record);
    void removeRowAt(int row);
    bool mergeUniqueRecords(const QList<QVariantMap>& fresh);
    void removeVanishedAndRestatedRows(const QList<QVariantMap>& fresh);
    void mergeFreshRecords(const QList<QVariantMap>& fresh);
};

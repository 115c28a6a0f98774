#pragma once

#include "sync/basesyncmanager.h"
#include "sync/sortedlistinfo.h"
#include "sync/sortingnamespace.h"

#include <QHash>
#include <QPair>
#include <QString>

#include <memory>

// The sorting settings of every list, kept in "sorting.dat" and exchanged with the server's
// "sorting" store. Lives on the database thread; the interface reaches it through DataManager.
class SortingManager : public BaseSyncManager
{
    Q_OBJECT

public:
    // A list is known by its id together with its type: a project and its folder view may share an id.
    using ListKey = QPair<QString, SortingNamespace::ListType>;
    using SortedLists = QHash<ListKey, SortedListInfo>;

    explicit SortingManager(QObject* parent = nullptr);
    ~SortingManager() override;

    // Setting what the list already has changes nothing and sends nothing.
    Q_INVOKABLE void setSortedList(const QString& listId, SortingNamespace::ListType listType,
                                   SortingNamespace::SortingType sortingType, bool groupByDate);
    Q_INVOKABLE void setManualSortedList(const QString& listId, SortingNamespace::ListType listType,
                                         const SortingNamespace::OrderHash& orderHash);
    Q_INVOKABLE void deleteSortedList(const QString& listId, SortingNamespace::ListType listType);
    // A list nobody has sorted reads as ascending by time stamp, grouped by date.
    Q_INVOKABLE SortedListInfo getSortedListInfo(const QString& listId,
                                                 SortingNamespace::ListType listType) const;
    Q_INVOKABLE bool hasSortedListInfo(const QString& listId, SortingNamespace::ListType listType) const;
    Q_INVOKABLE SortingNamespace::SortingType getSortingType(const QString& listId,
                                                             SortingNamespace::ListType listType) const;
    Q_INVOKABLE bool getGroupByDateParam(const QString& listId, SortingNamespace::ListType listType) const;
    SortedLists getAllSortedLists() const;
    // Forgets every list and every pending change, as a logout must.
    Q_INVOKABLE void clearAll();

protected:
    QString apiEndpoint() const override;
    void handleSync() override;
    void performSendRequest() override;
    void performDeleteRequest() override;
    void performGetRequest() override;
    // The server decides which lists exist; a record wins unless the local list or deletion is newer.
    void handleServerObjects(const QJsonArray& objects) override;

private:
    void handleSendReply(const QByteArray& body, const SortedLists& sent);
    void handleDeleteReply(const QHash<QString, QDateTime>& sent);
    void handleGetReply(const QByteArray& body);
    bool isNewerOnServer(const ListKey& key, const QDateTime& serverChanged) const;
    void load();
    void save() const;

    struct Private;
    std::unique_ptr<Private> d;
};

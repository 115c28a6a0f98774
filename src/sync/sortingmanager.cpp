#include "sortingmanager.h"

#include "core/clock.h"
#include "core/startup.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>

using namespace SortingNamespace;

namespace {

const QString sortingInfoKey = QStringLiteral("sorting_info");
const QString objectsToSendKey = QStringLiteral("objects_to_send");
const QString objectsToDeleteKey = QStringLiteral("objects_to_delete");

const QString listIdField = QStringLiteral("list_id");
const QString listTypeField = QStringLiteral("list_type");
const QString groupByDateField = QStringLiteral("group_by_date");
const QString sortingTypeField = QStringLiteral("sorting_type");
const QString lastChangedField = QStringLiteral("last_changed");
const QString listItemsField = QStringLiteral("list_items");
const QString objectIdField = QStringLiteral("object_id");
const QString orderValueField = QStringLiteral("order_value");

const QString logName = QStringLiteral("Sorting");

using ListKey = SortingManager::ListKey;
using SortedLists = SortingManager::SortedLists;
using Deletions = QHash<QString, QDateTime>;

// Wire names in the order of the enums.
const QStringList listTypeNames = {QStringLiteral("project"), QStringLiteral("context"),
                                   QStringLiteral("folder"), QStringLiteral("dailyplan"),
                                   QStringLiteral("favorites")};
const QStringList sortingTypeNames = {QStringLiteral("manual"), QStringLiteral("alphabetical"),
                                      QStringLiteral("timestamp_asc"), QStringLiteral("timestamp_desc")};

QDateTime dateTimeOf(const QJsonValue& value)
{
    return QDateTime::fromString(value.toString(), Qt::ISODate).toUTC();
}

QJsonArray listItemsOf(const OrderHash& orderHash)
{
    QJsonArray items;
    for (auto it = orderHash.cbegin(); it != orderHash.cend(); ++it)
        items.append(QJsonObject{{objectIdField, it.key()}, {orderValueField, it.value()}});
    return items;
}

OrderHash orderHashOf(const QJsonArray& items)
{
    OrderHash orderHash;
    for (const QJsonValue& item : items) {
        const QJsonObject object = item.toObject();
        orderHash.insert(object.value(objectIdField).toString(), object.value(orderValueField).toInt());
    }
    return orderHash;
}

QJsonObject recordOf(const ListKey& key, const SortedListInfo& info)
{
    QJsonObject record{{listIdField, key.first},
                       {listTypeField, listTypeNames.value(key.second)},
                       {groupByDateField, info.groupByDate},
                       {sortingTypeField, sortingTypeNames.value(info.sortingType)},
                       {lastChangedField, info.lastChanged.toString(Qt::ISODate)}};
    if (info.sortingType == ManualType)
        record.insert(listItemsField, listItemsOf(info.orderHash));
    return record;
}

// False for a record whose type names are unknown or whose time cannot be read.
bool readRecord(const QJsonObject& record, ListKey* key, SortedListInfo* info)
{
    const int listType = listTypeNames.indexOf(record.value(listTypeField).toString());
    const int sortingType = sortingTypeNames.indexOf(record.value(sortingTypeField).toString());
    const QDateTime lastChanged = dateTimeOf(record.value(lastChangedField));
    if (listType < 0 || sortingType < 0 || !lastChanged.isValid())
        return false;
    *key = ListKey(record.value(listIdField).toString(), static_cast<ListType>(listType));
    *info = SortedListInfo(static_cast<SortingType>(sortingType),
                           orderHashOf(record.value(listItemsField).toArray()), lastChanged,
                           record.value(groupByDateField).toBool());
    return true;
}

QJsonArray recordsOf(const SortedLists& lists)
{
    QJsonArray records;
    for (auto it = lists.cbegin(); it != lists.cend(); ++it)
        records.append(recordOf(it.key(), it.value()));
    return records;
}

SortedLists listsOf(const QJsonArray& records)
{
    SortedLists lists;
    ListKey key;
    SortedListInfo info;
    for (const QJsonValue& record : records) {
        if (readRecord(record.toObject(), &key, &info))
            lists.insert(key, info);
    }
    return lists;
}

QJsonArray deletionRecordsOf(const Deletions& deletions)
{
    QJsonArray records;
    for (auto it = deletions.cbegin(); it != deletions.cend(); ++it)
        records.append(
            QJsonObject{{listIdField, it.key()}, {lastChangedField, it.value().toString(Qt::ISODate)}});
    return records;
}

Deletions deletionsOf(const QJsonArray& records)
{
    Deletions deletions;
    for (const QJsonValue& record : records) {
        const QJsonObject object = record.toObject();
        deletions.insert(object.value(listIdField).toString(), dateTimeOf(object.value(lastChangedField)));
    }
    return deletions;
}

// Drops what was delivered, but keeps an entry that changed again while the request was under way.
template <typename Key, typename Value, typename Changed>
void removeDelivered(QHash<Key, Value>& pending, const QHash<Key, Value>& delivered, Changed lastChanged)
{
    for (auto it = delivered.cbegin(); it != delivered.cend(); ++it) {
        const auto current = pending.constFind(it.key());
        if (current != pending.cend() && lastChanged(*current) == lastChanged(it.value()))
            pending.erase(current);
    }
}

// Times are kept in whole seconds, as the file and the server keep them, so that a list compares the
// same before and after a restart.
QDateTime now()
{
    const QDateTime moment = Clock::currentDateTimeUtc();
    return moment.addMSecs(-moment.time().msec());
}

QString filePath()
{
    return Startup::dataFilePath(QStringLiteral("sorting.dat"));
}

} // namespace

struct SortingManager::Private
{
    SortedLists sortingInfo;
    SortedLists objectsToSend;
    Deletions objectsToDelete;
};

SortingManager::SortingManager(QObject* parent)
    : BaseSyncManager(parent)
    , d(std::make_unique<Private>())
{
    load();
}

SortingManager::~SortingManager() = default;

void SortingManager::setSortedList(const QString& listId, ListType listType, SortingType sortingType,
                                   bool groupByDate)
{
    const ListKey key(listId, listType);
    const auto known = d->sortingInfo.constFind(key);
    if (known != d->sortingInfo.cend() && known->sortingType == sortingType &&
        known->groupByDate == groupByDate)
        return;
    const SortedListInfo info(sortingType, OrderHash(), now(), groupByDate);
    d->sortingInfo.insert(key, info);
    d->objectsToSend.insert(key, info);
    save();
}

void SortingManager::setManualSortedList(const QString& listId, ListType listType, const OrderHash& orderHash)
{
    OrderHash order = orderHash;
    order.remove(QString());
    const ListKey key(listId, listType);
    const SortedListInfo info(ManualType, order, now(), false);
    d->sortingInfo.insert(key, info);
    d->objectsToSend.insert(key, info);
    save();
}

void SortingManager::deleteSortedList(const QString& listId, ListType listType)
{
    const ListKey key(listId, listType);
    if (!d->sortingInfo.contains(key))
        return;
    d->sortingInfo.remove(key);
    d->objectsToSend.remove(key);
    d->objectsToDelete.insert(listId, now());
    save();
}

SortedListInfo SortingManager::getSortedListInfo(const QString& listId, ListType listType) const
{
    return d->sortingInfo.value(ListKey(listId, listType));
}

bool SortingManager::hasSortedListInfo(const QString& listId, ListType listType) const
{
    return d->sortingInfo.contains(ListKey(listId, listType));
}

SortingType SortingManager::getSortingType(const QString& listId, ListType listType) const
{
    return getSortedListInfo(listId, listType).sortingType;
}

bool SortingManager::getGroupByDateParam(const QString& listId, ListType listType) const
{
    return getSortedListInfo(listId, listType).groupByDate;
}

SortingManager::SortedLists SortingManager::getAllSortedLists() const
{
    return d->sortingInfo;
}

void SortingManager::clearAll()
{
    d->sortingInfo.clear();
    d->objectsToSend.clear();
    d->objectsToDelete.clear();
    save();
}

QString SortingManager::apiEndpoint() const
{
    return QStringLiteral("sorting");
}

void SortingManager::handleSync()
{
    if (!d->objectsToDelete.isEmpty())
        performDeleteRequest();
    else if (!d->objectsToSend.isEmpty())
        performSendRequest();
    else
        performGetRequest();
}

void SortingManager::performSendRequest()
{
    const SortedLists sent = d->objectsToSend;
    const QByteArray body = QJsonDocument(recordsOf(sent)).toJson(QJsonDocument::Compact);
    handleReply(createPostRequest(endpointUrl(QStringLiteral("/v1/")), body), logName,
                [this, sent](const QByteArray& reply) { handleSendReply(reply, sent); });
}

void SortingManager::performDeleteRequest()
{
    const Deletions sent = d->objectsToDelete;
    const QByteArray body = QJsonDocument(deletionRecordsOf(sent)).toJson(QJsonDocument::Compact);
    handleReply(createPostRequest(endpointUrl(QStringLiteral("/v1/list/delete/")), body), logName,
                [this, sent](const QByteArray&) { handleDeleteReply(sent); });
}

void SortingManager::performGetRequest()
{
    handleReply(createGetRequest(endpointUrl(QStringLiteral("/v1/"))), logName,
                [this](const QByteArray& reply) { handleGetReply(reply); });
}

void SortingManager::handleSendReply(const QByteArray& body, const SortedLists& sent)
{
    removeDelivered(d->objectsToSend, sent, [](const SortedListInfo& info) { return info.lastChanged; });
    save();
    handleGetReply(body);
}

void SortingManager::handleDeleteReply(const Deletions& sent)
{
    removeDelivered(d->objectsToDelete, sent, [](const QDateTime& deleted) { return deleted; });
    save();
    handleSync();
}

void SortingManager::handleGetReply(const QByteArray& body)
{
    handleServerObjects(QJsonDocument::fromJson(body).array());
    setSyncActive(false);
}

void SortingManager::handleServerObjects(const QJsonArray& objects)
{
    const SortedLists serverLists = listsOf(objects);
    for (auto it = serverLists.cbegin(); it != serverLists.cend(); ++it) {
        if (!d->sortingInfo.contains(it.key()) || isNewerOnServer(it.key(), it.value().lastChanged))
            d->sortingInfo.insert(it.key(), it.value());
    }
    // A list changed while the send was under way is not on the server yet, and stays.
    for (auto it = d->sortingInfo.begin(); it != d->sortingInfo.end();) {
        if (serverLists.contains(it.key()) || d->objectsToSend.contains(it.key()))
            ++it;
        else
            it = d->sortingInfo.erase(it);
    }
    save();
}

bool SortingManager::isNewerOnServer(const ListKey& key, const QDateTime& serverChanged) const
{
    const auto deletion = d->objectsToDelete.constFind(key.first);
    if (deletion != d->objectsToDelete.cend() && *deletion >= serverChanged)
        return false;
    return serverChanged >= d->sortingInfo.value(key).lastChanged;
}

void SortingManager::load()
{
    const QSettings file(filePath(), QSettings::IniFormat);
    d->sortingInfo = listsOf(file.value(sortingInfoKey).toJsonArray());
    d->objectsToSend = listsOf(file.value(objectsToSendKey).toJsonArray());
    d->objectsToDelete = deletionsOf(file.value(objectsToDeleteKey).toJsonArray());
}

void SortingManager::save() const
{
    QSettings file(filePath(), QSettings::IniFormat);
    file.setValue(sortingInfoKey, QVariant(recordsOf(d->sortingInfo)));
    file.setValue(objectsToSendKey, QVariant(recordsOf(d->objectsToSend)));
    file.setValue(objectsToDeleteKey, QVariant(deletionRecordsOf(d->objectsToDelete)));
    file.sync();
}

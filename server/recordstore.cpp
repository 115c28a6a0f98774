#include "recordstore.h"

#include "serverdatabase.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QStringList>

namespace {

constexpr int mostRecords = 10000;
constexpr int mostListItems = 100000;

const QString favorites = QStringLiteral("favorites");
const QString sorting = QStringLiteral("sorting");
const QString reminders = QStringLiteral("reminders");

const QStringList objectTypes = {QStringLiteral("task"), QStringLiteral("project"),
                                 QStringLiteral("context")};
const QStringList listTypes = {QStringLiteral("project"), QStringLiteral("context"), QStringLiteral("folder"),
                               QStringLiteral("dailyplan"), QStringLiteral("favorites")};
const QStringList sortingTypes = {QStringLiteral("manual"), QStringLiteral("alphabetical"),
                                  QStringLiteral("timestamp_asc"), QStringLiteral("timestamp_desc")};
const QStringList appliedDates = {QStringLiteral("start"), QStringLiteral("end")};
const QStringList predefinedTypes = {
    QStringLiteral("go"),     QStringLiteral("5min"),  QStringLiteral("15min"),
    QStringLiteral("30min"),  QStringLiteral("1hour"), QStringLiteral("2hours"),
    QStringLiteral("3hours"), QStringLiteral("1day"),  QStringLiteral("2days")};

bool isId(const QJsonValue& value)
{
    static const QRegularExpression shape(QStringLiteral("^[A-Za-z0-9._{}-]{1,64}$"));
    return value.isString() && shape.match(value.toString()).hasMatch();
}

bool isOneOf(const QJsonValue& value, const QStringList& names)
{
    return value.isString() && names.contains(value.toString());
}

qint64 lastChanged(const QJsonObject& record)
{
    const QJsonValue value = record.value(QStringLiteral("last_changed"));
    if (!value.isString())
        return -1;
    const QDateTime moment = QDateTime::fromString(value.toString(), Qt::ISODate);
    return moment.isValid() ? moment.toMSecsSinceEpoch() : -1;
}

bool validListItems(const QJsonValue& value)
{
    if (!value.isArray() || value.toArray().size() > mostListItems)
        return false;
    for (const QJsonValue& item : value.toArray()) {
        const QJsonObject entry = item.toObject();
        if (!isId(entry.value(QStringLiteral("object_id"))) ||
            !entry.value(QStringLiteral("order_value")).isDouble())
            return false;
    }
    return true;
}

bool validRecord(const QString& store, const QJsonObject& record, bool deletion)
{
    if (lastChanged(record) < 0)
        return false;
    if (store == favorites)
        return isId(record.value(QStringLiteral("object_id"))) &&
               isOneOf(record.value(QStringLiteral("object_type")), objectTypes);
    if (store == reminders)
        return isId(record.value(QStringLiteral("object_id"))) &&
               isOneOf(record.value(QStringLiteral("applied_date")), appliedDates) &&
               record.value(QStringLiteral("reminder_type")).toString() == QLatin1String("predefined") &&
               isOneOf(record.value(QStringLiteral("predefined_type")), predefinedTypes);
    if (!isId(record.value(QStringLiteral("list_id"))))
        return false;
    if (deletion)
        return true;
    const bool manual = record.value(QStringLiteral("sorting_type")).toString() == QLatin1String("manual");
    return isOneOf(record.value(QStringLiteral("list_type")), listTypes) &&
           isOneOf(record.value(QStringLiteral("sorting_type")), sortingTypes) &&
           record.value(QStringLiteral("group_by_date")).isBool() &&
           (!manual || validListItems(record.value(QStringLiteral("list_items"))));
}

QString recordKey(const QString& store, const QJsonObject& record)
{
    const auto field = [&record](const char* name) { return record.value(QLatin1String(name)).toString(); };
    if (store == favorites)
        return field("object_type") + QLatin1Char('/') + field("object_id");
    if (store == sorting)
        return field("list_id") + QLatin1Char('/') + field("list_type");
    return field("object_id") + QLatin1Char('/') + field("applied_date") + QLatin1Char('/') +
           field("predefined_type");
}

QString groupKey(const QString& store, const QJsonObject& record)
{
    return record.value(store == sorting ? QLatin1String("list_id") : QLatin1String("object_id")).toString();
}

// Reminders follow arrival; the others only let a change replace one that is not newer.
QString guard(const QString& store)
{
    return store == reminders ? QString()
                              : QStringLiteral(" WHERE records.last_changed <= excluded.last_changed");
}

bool upsert(qint64 accountId, const QString& store, const QJsonObject& record, bool deleted)
{
    QSqlQuery query(ServerDatabase::connection());
    return ServerDatabase::execute(
        query,
        QStringLiteral(
            "INSERT INTO records (account_id, store, record_key, group_key, body, last_changed, deleted) "
            "VALUES (?, ?, ?, ?, ?, ?, ?) ON CONFLICT (account_id, store, record_key) DO UPDATE SET "
            "body = excluded.body, last_changed = excluded.last_changed, deleted = excluded.deleted") +
            guard(store),
        {accountId, store, recordKey(store, record), groupKey(store, record),
         QString::fromUtf8(QJsonDocument(record).toJson(QJsonDocument::Compact)), lastChanged(record),
         deleted ? 1 : 0});
}

// A deleted sorted list is named by its id alone and takes all its list types with it, except those
// changed after the deletion.
bool removeLists(qint64 accountId, const QJsonObject& record)
{
    QSqlQuery query(ServerDatabase::connection());
    return ServerDatabase::execute(query,
                                   QStringLiteral("UPDATE records SET deleted = 1, last_changed = ? "
                                                  "WHERE account_id = ? AND store = ? AND group_key = ? "
                                                  "AND last_changed <= ?"),
                                   {lastChanged(record), accountId, sorting,
                                    record.value(QStringLiteral("list_id")).toString(), lastChanged(record)});
}

} // namespace

bool RecordStore::isStore(const QString& store)
{
    return store == favorites || store == sorting || store == reminders;
}

bool RecordStore::validate(const QString& store, const QJsonArray& records, bool deletion, QString* error)
{
    if (records.size() > mostRecords) {
        *error = QStringLiteral("More than %1 records in one request").arg(mostRecords);
        return false;
    }
    for (int index = 0; index < records.size(); ++index) {
        if (!records.at(index).isObject() || !validRecord(store, records.at(index).toObject(), deletion)) {
            *error = QStringLiteral("Record %1 is not a valid %2 record").arg(index).arg(store);
            return false;
        }
    }
    return true;
}

bool RecordStore::records(qint64 accountId, const QString& store, QJsonArray* result)
{
    QSqlQuery query(ServerDatabase::connection());
    query.setForwardOnly(true);
    if (!ServerDatabase::execute(query,
                                 QStringLiteral("SELECT body FROM records WHERE account_id = ? AND store = ? "
                                                "AND deleted = 0 ORDER BY record_key"),
                                 {accountId, store}))
        return false;
    while (query.next())
        result->append(QJsonDocument::fromJson(query.value(0).toByteArray()).object());
    return true;
}

bool RecordStore::send(qint64 accountId, const QString& store, const QJsonArray& records)
{
    ServerTransaction transaction;
    for (const QJsonValue& record : records) {
        if (!upsert(accountId, store, record.toObject(), false))
            return false;
    }
    return transaction.commit();
}

bool RecordStore::remove(qint64 accountId, const QString& store, const QJsonArray& records)
{
    ServerTransaction transaction;
    for (const QJsonValue& record : records) {
        const bool removed = store == sorting ? removeLists(accountId, record.toObject())
                                              : upsert(accountId, store, record.toObject(), true);
        if (!removed)
            return false;
    }
    return transaction.commit();
}

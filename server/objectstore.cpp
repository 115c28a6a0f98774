#include "objectstore.h"

#include "serverdatabase.h"

#include <QHash>
#include <QJsonDocument>
#include <QSqlQuery>
#include <QVector>

#include <algorithm>

namespace {

// Deeper chains than this are not followed; no real tree comes near it.
constexpr int deepestChain = 256;

struct StoredRow
{
    bool exists = false;
    bool folder = false;
    int state = 0;
    qint64 timestamp = 0;
    QString parent;
};

StoredRow findRow(qint64 accountId, const QString& kind, const QString& id)
{
    QSqlQuery query(ServerDatabase::connection());
    if (!ServerDatabase::execute(query,
                                 QStringLiteral("SELECT is_folder, state, timestamp, parent FROM objects "
                                                "WHERE account_id = ? AND kind = ? AND id = ?"),
                                 {accountId, kind, id}) ||
        !query.next())
        return {};
    return {true, query.value(0).toInt() != 0, query.value(1).toInt(), query.value(2).toLongLong(),
            query.value(3).toString()};
}

// True when making `parent` the parent of `id` would close a loop.
bool closesLoop(qint64 accountId, const QString& kind, const QString& id, QString parent)
{
    for (int depth = 0; depth < deepestChain && !parent.isEmpty(); ++depth) {
        if (parent == id)
            return true;
        parent = findRow(accountId, kind, parent).parent;
    }
    return !parent.isEmpty();
}

QString missingParent(const QString& parent, const QString& id)
{
    return QStringLiteral("Parent(%1) required for object(%2) doesn't exist").arg(parent, id);
}

QString contextProblem(qint64 accountId, const QJsonObject& object, const QString& kind)
{
    const QString context = object.value(QStringLiteral("CONTEXT")).toString();
    if (context.isEmpty())
        return QString();
    const QString id = object.value(QStringLiteral("ID")).toString();
    const StoredRow row = findRow(accountId, QStringLiteral("context"), context);
    if (!row.exists)
        return QStringLiteral("Context(%1) required for %2(%3) doesn't exist").arg(context, kind, id);
    const bool objectDeleted = object.value(QStringLiteral("STATE")).toInt() & 1;
    if (kind == QLatin1String("task") && (row.state & 1) && !objectDeleted)
        return QStringLiteral("Context(%1) required for task(%2) was deleted").arg(context, id);
    return QString();
}

QString parentProblem(qint64 accountId, const QJsonObject& object, const QString& kind)
{
    const QString parent = object.value(QStringLiteral("PARENT")).toString();
    const QString id = object.value(QStringLiteral("ID")).toString();
    if (kind == QLatin1String("task")) {
        const StoredRow row = findRow(accountId, QStringLiteral("project"), parent);
        if (!row.exists || row.folder)
            return missingParent(parent, id) + QStringLiteral(" as a project");
        return QString();
    }
    if (parent.isEmpty())
        return QString();
    const StoredRow row = findRow(accountId, kind, parent);
    if (!row.exists)
        return missingParent(parent, id);
    if (kind == QLatin1String("project") && !row.folder)
        return QStringLiteral("Parent(%1) isn't folder required for folder(%2)").arg(parent, id);
    if (closesLoop(accountId, kind, id, parent))
        return missingParent(parent, id) + QStringLiteral(" outside the object itself");
    return QString();
}

// The text of error 103 for the first bad reference, or empty.
QString referenceProblem(qint64 accountId, const QString& kind, const QJsonObject& object)
{
    const QString context =
        kind == QLatin1String("context") ? QString() : contextProblem(accountId, object, kind);
    return context.isEmpty() ? parentProblem(accountId, object, kind) : context;
}

// Raises the account's revision and answers the new value; in PostgreSQL this also locks the account
// row, and in SQLite takes the write lock, so writes of one account follow each other.
qint64 nextRevision(qint64 accountId)
{
    QSqlQuery query(ServerDatabase::connection());
    if (!ServerDatabase::execute(
            query,
            QStringLiteral("UPDATE accounts SET revision = revision + 1 WHERE id = ? RETURNING revision"),
            {accountId}) ||
        !query.next())
        return 0;
    return query.value(0).toLongLong();
}

qint64 currentRevision(qint64 accountId)
{
    QSqlQuery query(ServerDatabase::connection());
    if (!ServerDatabase::execute(query, QStringLiteral("SELECT revision FROM accounts WHERE id = ?"),
                                 {accountId}) ||
        !query.next())
        return 0;
    return query.value(0).toLongLong();
}

int kindRank(const QString& kind)
{
    if (kind == QLatin1String("context"))
        return 0;
    return kind == QLatin1String("project") ? 1 : 2;
}

// Depth of every context and project (folders included) in its own tree, 0 at the root.
class DepthMap
{
public:
    bool load(qint64 accountId)
    {
        QSqlQuery query(ServerDatabase::connection());
        query.setForwardOnly(true);
        if (!ServerDatabase::execute(query,
                                     QStringLiteral("SELECT kind, id, parent FROM objects "
                                                    "WHERE account_id = ? AND kind <> 'task'"),
                                     {accountId}))
            return false;
        while (query.next())
            m_parents.insert(key(query.value(0).toString(), query.value(1).toString()),
                             query.value(2).toString());
        return true;
    }

    int depth(const QString& kind, const QString& id)
    {
        const QString start = key(kind, id);
        const auto known = m_depths.constFind(start);
        if (known != m_depths.constEnd())
            return *known;
        int depth = 0;
        QString parent = m_parents.value(start);
        while (!parent.isEmpty() && depth < deepestChain) {
            ++depth;
            parent = m_parents.value(key(kind, parent));
        }
        m_depths.insert(start, depth);
        return depth;
    }

private:
    static QString key(const QString& kind, const QString& id) { return kind + QLatin1Char('/') + id; }

    QHash<QString, QString> m_parents;
    QHash<QString, int> m_depths;
};

struct ChangedObject
{
    int rank;
    int depth;
    QByteArray json;
};

} // namespace

Outcome ObjectStore::changes(qint64 accountId, qint64 revision)
{
    ServerTransaction transaction;
    const qint64 current = currentRevision(accountId);
    if (!transaction.isActive() || current == 0)
        return Outcome::failure(ResultCode::InternalError, QStringLiteral("Internal server error"));
    if (revision > current)
        revision = 0;
    QSqlQuery query(ServerDatabase::connection());
    query.setForwardOnly(true);
    DepthMap depths;
    if (!depths.load(accountId) ||
        !ServerDatabase::execute(query,
                                 QStringLiteral("SELECT kind, id, predefined, inbox, body FROM objects "
                                                "WHERE account_id = ? AND revision > ? AND revision <= ?"),
                                 {accountId, revision, current}))
        return Outcome::failure(ResultCode::InternalError, QStringLiteral("Internal server error"));
    QVector<ChangedObject> objects;
    while (query.next()) {
        const QString kind = query.value(0).toString();
        const int rank = kindRank(kind);
        const int depth = rank == 2 ? 0 : depths.depth(kind, query.value(1).toString());
        // The stored body is compact JSON of an object, so the server's keys go in front of its first key.
        const QByteArray body = query.value(4).toByteArray();
        QByteArray json = "{\"TYPE\":\"" + kind.toLatin1() +
                          "\",\"PREDEFINED\":" + query.value(2).toByteArray() +
                          ",\"INBOX\":" + query.value(3).toByteArray() + ',' + body.mid(1);
        objects.append({rank, depth, std::move(json)});
    }
    std::stable_sort(objects.begin(), objects.end(),
                     [](const ChangedObject& left, const ChangedObject& right) {
                         return left.rank != right.rank ? left.rank < right.rank : left.depth < right.depth;
                     });
    QByteArray result = '[' + QByteArray::number(current);
    for (const ChangedObject& object : qAsConst(objects))
        result += ',' + object.json;
    result += ']';
    return Outcome::success(result);
}

Outcome ObjectStore::write(qint64 accountId, const QString& kind, Write mode, qint64 clientRevision,
                           const QJsonObject& object)
{
    ServerTransaction transaction;
    const qint64 revision = transaction.isActive() ? nextRevision(accountId) : 0;
    if (revision == 0)
        return Outcome::failure(ResultCode::InternalError, QStringLiteral("Internal server error"));
    if (clientRevision > revision - 1)
        return Outcome::failure(ResultCode::RevisionAhead,
                                QStringLiteral("Client revision %1 is ahead of the server's %2")
                                    .arg(clientRevision)
                                    .arg(revision - 1));
    const QString id = object.value(QStringLiteral("ID")).toString();
    const StoredRow stored = findRow(accountId, kind, id);
    if (mode == Write::Create && stored.exists)
        return Outcome::failure(ResultCode::ObjectExists,
                                QStringLiteral("The %1 %2 already exists").arg(kind, id));
    if (mode == Write::Update && !stored.exists)
        return Outcome::failure(ResultCode::ObjectMissing,
                                QStringLiteral("The %1 %2 doesn't exist").arg(kind, id));
    const qint64 timestamp = static_cast<qint64>(object.value(QStringLiteral("TIMESTAMP")).toDouble());
    if (stored.exists && stored.timestamp > timestamp)
        return Outcome::failure(
            ResultCode::NewerObject,
            QStringLiteral(": Server has newer object; timestamp: %1").arg(stored.timestamp));
    const QString problem = referenceProblem(accountId, kind, object);
    if (!problem.isEmpty())
        return Outcome::failure(ResultCode::BadReference, problem);
    if (!insert(accountId, revision, kind, object, 0, 0) || !transaction.commit())
        return Outcome::failure(ResultCode::InternalError, QStringLiteral("Internal server error"));
    return Outcome::success(QByteArray::number(revision));
}

bool ObjectStore::insert(qint64 accountId, qint64 revision, const QString& kind, const QJsonObject& object,
                         int predefined, int inbox)
{
    QSqlQuery query(ServerDatabase::connection());
    // A seeded object keeps its predefined code and inbox role through every later update.
    return ServerDatabase::execute(
        query,
        QStringLiteral(
            "INSERT INTO objects (account_id, kind, id, parent, is_folder, state, predefined, inbox, "
            "timestamp, revision, body) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) "
            "ON CONFLICT (account_id, kind, id) DO UPDATE SET parent = excluded.parent, "
            "is_folder = excluded.is_folder, state = excluded.state, timestamp = excluded.timestamp, "
            "revision = excluded.revision, body = excluded.body"),
        {accountId, kind, object.value(QStringLiteral("ID")).toString(),
         object.value(QStringLiteral("PARENT")).toString(),
         object.value(QStringLiteral("FOLDER")).toBool() ? 1 : 0,
         object.value(QStringLiteral("STATE")).toInt(), predefined, inbox,
         static_cast<qint64>(object.value(QStringLiteral("TIMESTAMP")).toDouble()), revision,
         QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact))});
}

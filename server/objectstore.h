#pragma once

#include "resultcode.h"

#include <QJsonObject>
#include <QString>

// The revision protocol's store. Every account has a revision counter; each accepted create or
// update raises it by one and stamps the object with it, so "what changed since revision r" is one
// indexed query. Objects are kept as the normalized JSON they arrived in, beside the few columns the
// server itself reasons about.
class ObjectStore
{
public:
    enum class Write { Create, Update };

    // [current revision, objects changed after `revision`...], parents before children. A revision
    // ahead of the account's (a restored server) is answered like 0, with everything.
    static Outcome changes(qint64 accountId, qint64 revision);
    // The object must already be normalized. Answers the new revision.
    static Outcome write(qint64 accountId, const QString& kind, Write mode, qint64 clientRevision,
                         const QJsonObject& object);
    // Stores an object of the server's own inside the caller's transaction.
    static bool insert(qint64 accountId, qint64 revision, const QString& kind, const QJsonObject& object,
                       int predefined, int inbox);
};

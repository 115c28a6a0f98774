#pragma once

#include <QJsonArray>
#include <QString>

// The small per-account stores outside the revision protocol: favorites, sorted lists and reminders.
// Each record has an identity within its store; what a send or a delete may overwrite is decided by
// "last_changed" for favorites and sorted lists, and by arrival for reminders, whose "last_changed"
// is a task's time rather than the time of the change.
class RecordStore
{
public:
    static bool isStore(const QString& store);
    // False with a message naming the first bad record; nothing is stored then.
    static bool validate(const QString& store, const QJsonArray& records, bool deletion, QString* error);

    // The account's records of the store, as last sent.
    static bool records(qint64 accountId, const QString& store, QJsonArray* result);
    static bool send(qint64 accountId, const QString& store, const QJsonArray& records);
    static bool remove(qint64 accountId, const QString& store, const QJsonArray& records);
};

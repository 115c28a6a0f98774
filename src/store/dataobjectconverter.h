#pragma once

#include "store/dataobject.h"

#include <QDateTime>
#include <QSqlRecord>
#include <QString>
#include <QVariant>

// How an object map turns into values for SQLite and how a table row turns back into a map.
class DataObjectConverter
{
public:
    DataObjectConverter() = delete;

    // One map per row, keyed by the upper-case field names. A non-zero START or DUE becomes a UTC
    // date-time; zero keeps the raw column value, which is how an undated object reads back.
    static DataObject fromRecord(const QSqlRecord& record);
    // A START or DUE column as a map holds it: a UTC date-time, or the raw value when it is zero.
    static QVariant readDate(const QVariant& columnValue);

    // Turns START and DUE into Unix seconds before a task or project is written. Only date-times
    // survive; anything else, a number included, becomes "no date". Both keys exist afterwards.
    static void prepareDates(DataObject& object);

    // The value as SQLite receives it: bools as 0 and 1, numbers as numbers, and everything else as
    // text, where a missing value is the empty text and never NULL.
    static QVariant toSqlValue(const QVariant& value);

    // The object as an update with the given timestamp leaves it in the table: synced only when it
    // came from the server, and without the SYNC marker. Dates stay as they are.
    static DataObject asWritten(DataObject object, uint timestamp);

    // A fresh object id: a lower-case GUID without braces.
    static QString newId();

    // Unix seconds as an unsigned 32-bit value; a moment outside that range, or an invalid one, gives
    // 0xFFFFFFFF.
    static uint toUnixTime(const QDateTime& dateTime);

    // Unix seconds of the present moment, as written into TIMESTAMP.
    static uint currentTimestamp();
};

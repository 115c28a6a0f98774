#pragma once

#include <QJsonObject>
#include <QString>

// Checks an object a client sends against the keys and value types of its kind and brings it into the
// one form the server stores and hands out: every key present, TIMESTAMP and STATE as integers,
// FOLDER as a bool, START and DUE as ISO 8601 UTC text or "" for no date.
class ObjectValidator
{
public:
    static bool isKind(const QString& kind);
    // False with a message naming the first fault; *normalized is then unspecified.
    static bool normalize(const QString& kind, const QJsonObject& object, QJsonObject* normalized,
                          QString* error);
};

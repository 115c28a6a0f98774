#include "objectvalidator.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>

#include <cmath>

namespace {

constexpr int longestName = 4096;
constexpr int longestMemo = 100000;
constexpr int longestPeriod = 1024;
constexpr double latestTimestamp = 1099511627776.0; // 2^40 seconds, far beyond any real clock

const QString idKey = QStringLiteral("ID");
const QString nameKey = QStringLiteral("NAME");
const QString parentKey = QStringLiteral("PARENT");
const QString memoKey = QStringLiteral("MEMO");
const QString startKey = QStringLiteral("START");
const QString dueKey = QStringLiteral("DUE");
const QString contextKey = QStringLiteral("CONTEXT");
const QString periodKey = QStringLiteral("PERIOD");
const QString folderKey = QStringLiteral("FOLDER");
const QString stateKey = QStringLiteral("STATE");
const QString timestampKey = QStringLiteral("TIMESTAMP");

// Client-side bookkeeping and the server's own annotations: accepted and dropped.
const QSet<QString> ignoredKeys = {QStringLiteral("SYNCED"),     QStringLiteral("LOCAL"),
                                   QStringLiteral("LEVEL"),      QStringLiteral("CHILDREN"),
                                   QStringLiteral("SYNC"),       QStringLiteral("TYPE"),
                                   QStringLiteral("PREDEFINED"), QStringLiteral("INBOX")};

QStringList keysOf(const QString& kind)
{
    QStringList keys = {idKey, nameKey, parentKey, memoKey, stateKey, timestampKey};
    if (kind == QLatin1String("project"))
        keys << startKey << dueKey << contextKey << folderKey;
    else if (kind == QLatin1String("task"))
        keys << startKey << dueKey << contextKey << periodKey;
    return keys;
}

bool isId(const QString& text, bool mayBeEmpty)
{
    static const QRegularExpression shape(QStringLiteral("^[A-Za-z0-9._{}-]{1,64}$"));
    return (mayBeEmpty && text.isEmpty()) || shape.match(text).hasMatch();
}

bool readText(const QJsonValue& value, int longest, QString* text)
{
    if (value.isUndefined() || value.isNull()) {
        text->clear();
        return true;
    }
    if (!value.isString() || value.toString().size() > longest)
        return false;
    *text = value.toString();
    return true;
}

bool readWholeNumber(const QJsonValue& value, double lowest, double highest, qint64* number)
{
    double real = 0;
    bool ok = value.isDouble();
    if (ok)
        real = value.toDouble();
    else if (value.isString())
        real = value.toString().toDouble(&ok);
    if (!ok || !std::isfinite(real) || real < lowest || real > highest)
        return false;
    *number = static_cast<qint64>(std::floor(real));
    return true;
}

bool readDate(const QJsonValue& value, QString* text)
{
    if (!readText(value, 64, text))
        return false;
    if (text->isEmpty())
        return true;
    const QDateTime dateTime = QDateTime::fromString(*text, Qt::ISODate);
    if (!dateTime.isValid())
        return false;
    *text = dateTime.toUTC().toString(Qt::ISODate);
    return true;
}

bool readFolder(const QJsonValue& value, bool* folder)
{
    if (value.isUndefined() || value.isNull()) {
        *folder = false;
        return true;
    }
    if (value.isBool()) {
        *folder = value.toBool();
        return true;
    }
    if (value.isDouble() && (value.toDouble() == 0 || value.toDouble() == 1)) {
        *folder = value.toDouble() == 1;
        return true;
    }
    return false;
}

// Reads one key into the normalized object; false when its value is not acceptable.
bool normalizeValue(const QString& key, const QJsonValue& value, QJsonObject* normalized)
{
    QString text;
    qint64 number = 0;
    bool folder = false;
    bool ok = false;
    if (key == idKey) {
        ok = value.isString() && isId(value.toString(), false);
        text = value.toString();
    } else if (key == parentKey || key == contextKey) {
        ok = readText(value, 64, &text) && isId(text, true);
    } else if (key == nameKey) {
        ok = value.isString() && readText(value, longestName, &text);
    } else if (key == memoKey) {
        ok = readText(value, longestMemo, &text);
    } else if (key == periodKey) {
        ok = readText(value, longestPeriod, &text);
    } else if (key == startKey || key == dueKey) {
        ok = readDate(value, &text);
    } else if (key == stateKey) {
        ok = value.isUndefined() || readWholeNumber(value, 0, 3, &number);
        normalized->insert(key, static_cast<int>(number));
        return ok;
    } else if (key == timestampKey) {
        ok = readWholeNumber(value, 0, latestTimestamp, &number);
        normalized->insert(key, static_cast<double>(number));
        return ok;
    } else if (key == folderKey) {
        ok = readFolder(value, &folder);
        normalized->insert(key, folder);
        return ok;
    }
    normalized->insert(key, text);
    return ok;
}

} // namespace

bool ObjectValidator::isKind(const QString& kind)
{
    return kind == QLatin1String("context") || kind == QLatin1String("project") ||
           kind == QLatin1String("task");
}

bool ObjectValidator::normalize(const QString& kind, const QJsonObject& object, QJsonObject* normalized,
                                QString* error)
{
    const QStringList keys = keysOf(kind);
    for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
        if (!keys.contains(it.key()) && !ignoredKeys.contains(it.key())) {
            *error = QStringLiteral("Unknown key %1 for a %2").arg(it.key(), kind);
            return false;
        }
    }
    *normalized = QJsonObject();
    for (const QString& key : keys) {
        if (!normalizeValue(key, object.value(key), normalized)) {
            *error = QStringLiteral("Missing or invalid %1 for a %2").arg(key, kind);
            return false;
        }
    }
    return true;
}

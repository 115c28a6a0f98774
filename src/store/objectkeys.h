#pragma once

#include <QString>

// Keys of the object maps, named after their columns. One set for the whole program, so that a map
// written in one place reads the same everywhere.
inline const QString idKey = QStringLiteral("ID");
inline const QString nameKey = QStringLiteral("NAME");
inline const QString parentKey = QStringLiteral("PARENT");
inline const QString startKey = QStringLiteral("START");
inline const QString dueKey = QStringLiteral("DUE");
inline const QString contextKey = QStringLiteral("CONTEXT");
inline const QString periodKey = QStringLiteral("PERIOD");
inline const QString folderKey = QStringLiteral("FOLDER");
inline const QString stateKey = QStringLiteral("STATE");
inline const QString timestampKey = QStringLiteral("TIMESTAMP");
inline const QString syncedKey = QStringLiteral("SYNCED");
inline const QString localKey = QStringLiteral("LOCAL");
inline const QString levelKey = QStringLiteral("LEVEL");
inline const QString childrenKey = QStringLiteral("CHILDREN");

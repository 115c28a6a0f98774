#pragma once

#include <QHash>
#include <QObject>
#include <QString>

// The vocabulary of per-list sorting, shared by the sort models, the data manager and the sorted-list
// sync. QML sees the enums as SortingEnums.
namespace SortingNamespace {
Q_NAMESPACE

enum ListType {
    ListTypeProject = 0,
    ListTypeContext = 1,
    ListTypeFolder = 2,
    ListTypeDailyPlan = 3,
    ListTypeFavorites = 4
};
Q_ENUM_NS(ListType)

enum SortingType { ManualType = 0, AlphabeticalType = 1, TimestampAscType = 2, TimestampDescType = 3 };
Q_ENUM_NS(SortingType)

// Object id to its position in a manually sorted list.
using OrderHash = QHash<QString, int>;

} // namespace SortingNamespace

#pragma once

#include "sync/sortingnamespace.h"

#include <QVariantMap>

// The comparison rules behind every sorted list. Each function answers the question a sort asks:
// true when `left` comes before `right`. Every rule ends in a comparison of the IDs, so two different
// objects never compare as equal and a list shows in the same order each time.
class SortingHelper
{
public:
    // Orders by state, then (with groupByDate) by due and start date, then by the sorting type.
    static bool compareObjects(const QVariantMap& left, const QVariantMap& right,
                               SortingNamespace::SortingType sortingType, bool groupByDate);
    static bool compareBySortingType(const QVariantMap& left, const QVariantMap& right,
                                     SortingNamespace::SortingType sortingType);
    // The trash order: latest deletion first, parents before their children, then by name.
    static bool compareDeletedObjects(const QVariantMap& left, const QVariantMap& right);
};

#pragma once

#include "sync/sortingnamespace.h"

#include <QStringList>

// Builds the positions of a manually sorted list from the IDs of the rows as they are shown.
// Rows a filter hides are not among the IDs and so get no position.
class ManualOrder
{
public:
    // Each row keeps its row number: the list looks the same, now in manual order.
    static SortingNamespace::OrderHash fromRows(const QStringList& visibleIds);

    // The order after dragging the row at oldIndex to newIndex: the rows in between shift by one
    // towards the place the dragged row left.
    static SortingNamespace::OrderHash afterMove(const QStringList& visibleIds, int oldIndex, int newIndex);
};

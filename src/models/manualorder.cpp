#include "manualorder.h"

using SortingNamespace::OrderHash;

OrderHash ManualOrder::fromRows(const QStringList& visibleIds)
{
    OrderHash order;
    order.reserve(visibleIds.size());
    for (int row = 0; row < visibleIds.size(); ++row)
        order.insert(visibleIds.at(row), row);
    return order;
}

OrderHash ManualOrder::afterMove(const QStringList& visibleIds, int oldIndex, int newIndex)
{
    OrderHash order;
    order.reserve(visibleIds.size());
    for (int row = 0; row < visibleIds.size(); ++row) {
        int position = row;
        if (row == oldIndex)
            position = newIndex;
        else if (oldIndex < newIndex && row > oldIndex && row <= newIndex)
            position = row - 1;
        else if (oldIndex > newIndex && row >= newIndex && row < oldIndex)
            position = row + 1;
        order.insert(visibleIds.at(row), position);
    }
    return order;
}

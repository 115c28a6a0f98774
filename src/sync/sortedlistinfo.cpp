#include "sortedlistinfo.h"

#include "core/clock.h"

SortedListInfo::SortedListInfo(SortingNamespace::SortingType sortingType,
                               const SortingNamespace::OrderHash& orderHash, const QDateTime& lastChanged,
                               bool groupByDate)
    : sortingType(sortingType)
    , orderHash(orderHash)
    , lastChanged(lastChanged.isNull() ? Clock::currentDateTimeUtc() : lastChanged.toUTC())
    , groupByDate(groupByDate)
{}

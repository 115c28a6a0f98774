#pragma once

#include "sync/sortingnamespace.h"

#include <QDateTime>
#include <QMetaType>

// The sorting settings of one list. A list nobody has sorted reads as the default-constructed value.
struct SortedListInfo
{
    // A null lastChanged is stamped with the present UTC time.
    SortedListInfo(SortingNamespace::SortingType sortingType = SortingNamespace::TimestampAscType,
                   const SortingNamespace::OrderHash& orderHash = SortingNamespace::OrderHash(),
                   const QDateTime& lastChanged = QDateTime(), bool groupByDate = true);

    SortingNamespace::SortingType sortingType;
    SortingNamespace::OrderHash orderHash;
    QDateTime lastChanged;
    bool groupByDate;
};

Q_DECLARE_METATYPE(SortedListInfo)

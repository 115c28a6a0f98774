#pragma once

#include "models/sortkey.h"

#include <QList>
#include <QSet>
#include <QVariantMap>
#include <QVector>

#include <functional>

// The data of a ListModel. Models with more state derive from it and hand their larger private part
// to ListModel's protected constructor.
class ListModelPrivate
{
public:
    using DataFunction = std::function<QList<QVariantMap>()>;

    explicit ListModelPrivate(DataFunction dataFunction);
    virtual ~ListModelPrivate();

    // Re-run on every update; it blocks on the database thread.
    const DataFunction dataFunction;
    // In the order in which the records were first seen, not the order the data function gives. Each
    // record is kept in its key, made once when the record arrives, so that neither the diffs here
    // nor the sort model above look its values up in the map again.
    QVector<SortKey> rows;
    // The ids of the rows, made when a diff first asks for them and from then on kept by ListModel as
    // rows come and go: a first fill has no need of them.
    QSet<QString> rowIds;
    bool rowIdsKept = false;
};

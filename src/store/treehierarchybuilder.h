#pragma once

#include "store/dataobject.h"

#include <QList>

// Builds a tree from the rows of a level query.
class TreeHierarchyBuilder
{
public:
    TreeHierarchyBuilder() = delete;

    // The rows must come ordered by LEVEL, then PARENT. Each row is filed under its ID and appended
    // to the CHILDREN of its parent when the parent is among the rows; rows at level 0 are the roots.
    // A row whose parent is missing joins no CHILDREN list but stays in objectById.
    static TreeHierarchy build(const QList<DataObject>& rows);
};

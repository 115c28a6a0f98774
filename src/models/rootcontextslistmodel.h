#pragma once

#include "models/sortmodel.h"

// The sort model of the root contexts, whatever its name says: keeps the "No context" row, the one
// with an empty ID, at the end.
class RootContextsListModel : public SortModel
{
    Q_OBJECT

public:
    using SortModel::SortModel;

protected:
    int predefinedObjectsSort(const QVariantMap& a, const QVariantMap& b) const override;
};

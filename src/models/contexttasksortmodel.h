#pragma once

#include "models/sortmodel.h"

// The mixed list of a context: its nested contexts, then its projects, then its tasks.
class ContextTaskSortModel : public SortModel
{
    Q_OBJECT

public:
    using SortModel::SortModel;

protected:
    int doAdditionalSort(const QVariantMap& a, const QVariantMap& b) const override;
};

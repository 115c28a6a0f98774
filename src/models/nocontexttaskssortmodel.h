#pragma once

#include "models/sortmodel.h"

// Tasks without a context, kept together by their project: the inbox's first, the single-actions
// project's next, and other projects' tasks by their time stamp.
class NoContextTasksSortModel : public SortModel
{
    Q_OBJECT

public:
    using SortModel::SortModel;

protected:
    bool lessThan(const QModelIndex& sourceLeft, const QModelIndex& sourceRight) const override;
};

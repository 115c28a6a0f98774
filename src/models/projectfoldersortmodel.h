#pragma once

#include "models/sortmodel.h"

// Root and nested project lists: folders before projects, the single-actions project last.
class ProjectFolderSortModel : public SortModel
{
    Q_OBJECT

public:
    using SortModel::SortModel;

protected:
    int predefinedObjectsSort(const QVariantMap& a, const QVariantMap& b) const override;
    int doAdditionalSort(const QVariantMap& a, const QVariantMap& b) const override;
};

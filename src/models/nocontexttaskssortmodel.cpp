#include "nocontexttaskssortmodel.h"

#include "models/nocontexttaskslistmodel.h"
#include "store/predefineddatahelper.h"
#include "sync/sortinghelper.h"

bool NoContextTasksSortModel::lessThan(const QModelIndex& sourceLeft, const QModelIndex& sourceRight) const
{
    const QString parentA = sourceLeft.data(NoContextTasksListModel::parentProjectRole).toString();
    const QString parentB = sourceRight.data(NoContextTasksListModel::parentProjectRole).toString();
    if (parentA == parentB)
        return SortModel::lessThan(sourceLeft, sourceRight);

    const PredefinedDataHelper* predefined = PredefinedDataHelper::instance();
    for (const QString& predefinedId : {predefined->norvelBoxId(), predefined->oneStepActionsId()}) {
        if (parentA == predefinedId)
            return true;
        if (parentB == predefinedId)
            return false;
    }
    // Equal time stamps fall to the IDs, so the order is the same at every refresh.
    return SortingHelper::compareBySortingType(recordAt(sourceLeft), recordAt(sourceRight),
                                               SortingNamespace::TimestampAscType);
}

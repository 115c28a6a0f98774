#include "projectfoldersortmodel.h"

#include "store/predefineddatahelper.h"

namespace {

bool isFolder(const QVariantMap& object)
{
    return object.value(QStringLiteral("FOLDER")).toBool();
}

} // namespace

int ProjectFolderSortModel::predefinedObjectsSort(const QVariantMap& a, const QVariantMap& b) const
{
    const QString singleActionsId = PredefinedDataHelper::instance()->oneStepActionsId();
    if (a.value(QStringLiteral("ID")).toString() == singleActionsId)
        return RightFirst;
    if (b.value(QStringLiteral("ID")).toString() == singleActionsId)
        return LeftFirst;
    return NoDecision;
}

int ProjectFolderSortModel::doAdditionalSort(const QVariantMap& a, const QVariantMap& b) const
{
    const bool folderA = isFolder(a);
    if (folderA == isFolder(b))
        return NoDecision;
    return folderA ? LeftFirst : RightFirst;
}

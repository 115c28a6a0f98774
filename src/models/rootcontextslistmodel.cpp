#include "rootcontextslistmodel.h"

namespace {

bool isNoContextObject(const QVariantMap& object)
{
    return object.value(QStringLiteral("ID")).toString().isEmpty();
}

} // namespace

int RootContextsListModel::predefinedObjectsSort(const QVariantMap& a, const QVariantMap& b) const
{
    if (isNoContextObject(a))
        return RightFirst;
    if (isNoContextObject(b))
        return LeftFirst;
    return NoDecision;
}

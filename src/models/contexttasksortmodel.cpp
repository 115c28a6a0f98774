#include "contexttasksortmodel.h"

namespace {

enum Kind { Context, Project, Task };

// A record's kind by its keys alone, as mixed lists tell them apart.
Kind kindOf(const QVariantMap& object)
{
    if (object.contains(QStringLiteral("FOLDER")))
        return Project;
    return object.contains(QStringLiteral("PERIOD")) ? Task : Context;
}

} // namespace

int ContextTaskSortModel::doAdditionalSort(const QVariantMap& a, const QVariantMap& b) const
{
    const Kind kindA = kindOf(a);
    const Kind kindB = kindOf(b);
    if (kindA == kindB)
        return NoDecision;
    return kindA < kindB ? LeftFirst : RightFirst;
}

#include "treehierarchybuilder.h"

#include "store/objectkeys.h"

namespace {

bool isRoot(const DataObject& object)
{
    return object.value(levelKey).toInt() == 0;
}
} // namespace

TreeHierarchy TreeHierarchyBuilder::build(const QList<DataObject>& rows)
{
    QHash<QString, DataObject> objectById;
    QHash<QString, DataObject> rootById;
    for (const DataObject& row : rows) {
        const QString id = row.value(idKey).toString();
        if (!objectById.contains(id))
            objectById.insert(id, row);
        if (isRoot(row) && !rootById.contains(id))
            rootById.insert(id, row);
    }

    // Deepest rows first, so that every child already carries its own children when it is appended.
    for (auto row = rows.crbegin(); row != rows.crend(); ++row) {
        const DataObject child = objectById.value(row->value(idKey).toString());
        const QString parentId = child.value(parentKey).toString();
        const auto parent = objectById.find(parentId);
        if (parent == objectById.end())
            continue;
        auto children = parent->value(childrenKey).value<QList<DataObject>>();
        children.append(child);
        parent->insert(childrenKey, QVariant::fromValue(children));
        if (isRoot(*parent))
            rootById.insert(parentId, *parent);
    }

    return TreeHierarchy{objectById, rootById.values()};
}

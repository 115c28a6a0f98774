#include "clipboard.h"

#include "store/datamanager.h"
#include "store/objectkeys.h"

namespace {
const QString objectIdKey = QStringLiteral("obj_id");
const QString stateInfoKey = QStringLiteral("state");
const QString childrenInfoKey = QStringLiteral("children");

QString idOf(const QVariantMap& object)
{
    return object.value(idKey).toString();
}

void recordStates(const QList<QVariantMap>& objects, QVariantMap& children)
{
    for (const QVariantMap& object : objects)
        children.insert(idOf(object), object.value(stateKey));
}

// The recursive queries return the starting object too, as a placeholder row with the state of a
// deleted one; it is no descendant, and restoring it would delete the pasted object again.
QVariantMap folderChildren(const QString& folderId)
{
    DataManager* data = DataManager::instance();
    QVariantMap children;
    for (const DataObject& descendant : data->getSubprojectsRecursive(folderId)) {
        if (idOf(descendant) == folderId)
            continue;
        children.insert(idOf(descendant), descendant.value(stateKey));
        if (!descendant.value(folderKey).toBool())
            recordStates(data->getProjectTasks(idOf(descendant)), children);
    }
    return children;
}

QVariantMap projectChildren(const QString& projectId)
{
    QVariantMap children;
    recordStates(DataManager::instance()->getProjectTasks(projectId), children);
    return children;
}

// Deleting a context empties its tasks' CONTEXT, so for a task the paste needs that context back,
// not a state.
QVariantMap contextChildren(const QString& contextId)
{
    DataManager* data = DataManager::instance();
    QVariantMap children;
    for (const DOContext& descendant : data->getSubcontextsRecursive(contextId)) {
        if (idOf(descendant) != contextId)
            children.insert(idOf(descendant), descendant.value(stateKey));
        for (const DOTask& task : data->getContextTasks(idOf(descendant)))
            children.insert(idOf(task), task.value(contextKey));
    }
    return children;
}
} // namespace

struct Clipboard::Private
{
    QVariantMap object;
    QVariantMap extraInfo;
    bool containsTask = false;
    bool containsProject = false;
    bool containsContext = false;
    bool containsFolder = false;
    // The map as handed in, to notice a repeated copy of the same object.
    QVariantMap original;
};

Clipboard* Clipboard::instance()
{
    static Clipboard* const clipboard = new Clipboard();
    return clipboard;
}

Clipboard::Clipboard()
    : d(std::make_unique<Private>())
{}

Clipboard::~Clipboard() = default;

QVariantMap Clipboard::object() const
{
    return d->object;
}

QVariantMap Clipboard::extraInfo() const
{
    return d->extraInfo;
}

bool Clipboard::containsTask() const
{
    return d->containsTask;
}

bool Clipboard::containsProject() const
{
    return d->containsProject;
}

bool Clipboard::containsContext() const
{
    return d->containsContext;
}

bool Clipboard::containsFolder() const
{
    return d->containsFolder;
}

void Clipboard::setObject(const QVariantMap& object)
{
    // A copy over a cut goes through even for the same map: it must forget what the cut recorded.
    if (object == d->original && d->extraInfo.isEmpty())
        return;
    d->original = object;
    setExtraInfo({});
    QVariantMap stored = object;
    // Projects, folders and contexts keep their id: pastes use it for cycle checks and clones.
    if (stored.contains(periodKey))
        stored.remove(idKey);
    for (const QString& key : {stateKey, levelKey, childrenKey, timestampKey})
        stored.remove(key);
    stored.insert(syncedKey, false);
    stored.insert(localKey, true);
    d->object = stored;
    emit objectChanged(object);
    updateFlags(object);
}

void Clipboard::updateFlags(const QVariantMap& object)
{
    const bool hasPeriod = object.contains(periodKey);
    const bool hasFolder = object.contains(folderKey);
    const auto update = [this](bool& flag, bool value, void (Clipboard::*changed)()) {
        if (flag == value)
            return;
        flag = value;
        emit(this->*changed)();
    };
    update(d->containsFolder, hasFolder && object.value(folderKey).toBool(),
           &Clipboard::containsFolderChanged);
    update(d->containsTask, hasPeriod, &Clipboard::containsTaskChanged);
    update(d->containsProject, hasFolder && !object.value(folderKey).toBool(),
           &Clipboard::containsProjectChanged);
    update(d->containsContext, !hasPeriod && !hasFolder, &Clipboard::containsContextChanged);
}

void Clipboard::setExtraInfo(const QVariantMap& info)
{
    if (info == d->extraInfo)
        return;
    d->extraInfo = info;
    emit extraInfoChanged();
}

void Clipboard::setCutObject(const QVariantMap& object)
{
    setObject(object);
    const QString id = idOf(object);
    QVariantMap info{{objectIdKey, id}, {stateInfoKey, object.value(stateKey)}};
    if (d->containsFolder)
        info.insert(childrenInfoKey, folderChildren(id));
    else if (d->containsProject)
        info.insert(childrenInfoKey, projectChildren(id));
    else if (d->containsContext)
        info.insert(childrenInfoKey, contextChildren(id));
    setExtraInfo(info);
}

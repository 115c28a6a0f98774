#include "nocontexttaskslistmodel.h"

#include "store/datamanager.h"

#include <utility>

namespace {

class NoContextTasksListModelPrivate : public ListModelPrivate
{
public:
    using ListModelPrivate::ListModelPrivate;

    // Project ID to name, filled as rows ask for it.
    QHash<QString, QString> projectNames;
};

NoContextTasksListModelPrivate* privateOf(const std::unique_ptr<ListModelPrivate>& d)
{
    return static_cast<NoContextTasksListModelPrivate*>(d.get());
}

} // namespace

NoContextTasksListModel::NoContextTasksListModel(DataFunction dataFunction, QObject* parent)
    : ListModel(std::make_unique<NoContextTasksListModelPrivate>(std::move(dataFunction)), parent)
{}

NoContextTasksListModel::~NoContextTasksListModel() = default;

QVariant NoContextTasksListModel::data(const QModelIndex& index, int role) const
{
    if (role != parentProjectRole && role != parentProjectNameRole)
        return ListModel::data(index, role);
    if (!index.isValid() || index.row() >= rowCount())
        return QVariant();
    const QString parentId = rowAt(index.row()).value(QStringLiteral("PARENT")).toString();
    return role == parentProjectRole ? QVariant(parentId) : projectName(parentId);
}

QHash<int, QByteArray> NoContextTasksListModel::roleNames() const
{
    QHash<int, QByteArray> names = ListModel::roleNames();
    names.insert(parentProjectRole, QByteArrayLiteral("parentProjectRole"));
    return names;
}

void NoContextTasksListModel::prepareUpdate()
{
    privateOf(d)->projectNames.clear();
}

QVariant NoContextTasksListModel::projectName(const QString& projectId) const
{
    QHash<QString, QString>& names = privateOf(d)->projectNames;
    const auto cached = names.constFind(projectId);
    if (cached != names.constEnd())
        return *cached;
    const QVariantMap project = DataManager::instance()->getProjectById(projectId);
    if (project.isEmpty())
        return QVariant();
    const QString name = project.value(QStringLiteral("NAME")).toString();
    names.insert(projectId, name);
    return name;
}

#include "searchsortfiltermodel.h"

namespace {

const QString idKey = QStringLiteral("ID");
const QString nameKey = QStringLiteral("NAME");
const QString memoKey = QStringLiteral("MEMO");
const QString stateKey = QStringLiteral("STATE");

// In the order the results show them.
enum Kind { Folder, Project, Context, Task };

Kind kindOf(const QVariantMap& object)
{
    if (object.value(QStringLiteral("FOLDER")).toBool())
        return Folder;
    if (object.contains(QStringLiteral("PERIOD")))
        return Task;
    return object.contains(QStringLiteral("CONTEXT")) ? Project : Context;
}

int stateOf(const QVariantMap& object)
{
    return object.value(stateKey).toInt();
}

} // namespace

struct SearchSortFilterModel::Private
{
    explicit Private(bool searchNamesOnly)
        : searchNamesOnly(searchNamesOnly)
    {}

    const bool searchNamesOnly;
    QString searchString;
    bool excludeCompletedTasks = false;
    bool excludeCompletedProjects = false;
};

SearchSortFilterModel::SearchSortFilterModel(bool searchNamesOnly, QObject* parent)
    : SortModel(parent)
    , d(std::make_unique<Private>(searchNamesOnly))
{}

SearchSortFilterModel::~SearchSortFilterModel() = default;

QString SearchSortFilterModel::searchString() const
{
    return d->searchString;
}

bool SearchSortFilterModel::excludeCompletedTasks() const
{
    return d->excludeCompletedTasks;
}

void SearchSortFilterModel::setExcludeCompletedTasks(bool exclude)
{
    if (d->excludeCompletedTasks == exclude)
        return;
    d->excludeCompletedTasks = exclude;
    invalidateFilter();
}

bool SearchSortFilterModel::excludeCompletedProjects() const
{
    return d->excludeCompletedProjects;
}

void SearchSortFilterModel::setExcludeCompletedProjects(bool exclude)
{
    if (d->excludeCompletedProjects == exclude)
        return;
    d->excludeCompletedProjects = exclude;
    invalidateFilter();
}

// The user searches for what is on the screen, so the pseudo-objects match in the interface language.
QString SearchSortFilterModel::displayedName(const QVariantMap& object)
{
    const QString name = object.value(nameKey).toString();
    if (name == QLatin1String("No context"))
        return tr("No context");
    if (name == QLatin1String("No folder"))
        return tr("No folder");
    if (name == QLatin1String("Norvel Box"))
        return tr("Norvel Box");
    if (name == QLatin1String("One Step Actions"))
        return tr("One Step Actions");
    return name;
}

// One pass filters and sorts everything again: the order depends on the string as well.
void SearchSortFilterModel::setSearchString(const QString& searchString)
{
    if (d->searchString == searchString)
        return;
    d->searchString = searchString;
    emit searchStringChanged(searchString);
    invalidate();
}

bool SearchSortFilterModel::lessThan(const QModelIndex& sourceLeft, const QModelIndex& sourceRight) const
{
    const QVariantMap a = recordAt(sourceLeft);
    const QVariantMap b = recordAt(sourceRight);
    const Kind kindA = kindOf(a);
    const Kind kindB = kindOf(b);
    if (kindA != kindB)
        return kindA < kindB;
    if (kindA == Folder || kindA == Context)
        return sortByName(a, b);
    return sortByStateAndName(a, b);
}

bool SearchSortFilterModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    const QVariantMap object = recordAt(sourceModel()->index(sourceRow, 0, sourceParent));
    return !isExcluded(object) && matches(object);
}

bool SearchSortFilterModel::isExcluded(const QVariantMap& object) const
{
    if (stateOf(object) != 2)
        return false;
    const Kind kind = kindOf(object);
    return (d->excludeCompletedTasks && kind == Task) || (d->excludeCompletedProjects && kind == Project);
}

bool SearchSortFilterModel::matches(const QVariantMap& object) const
{
    if (displayedName(object).contains(d->searchString, Qt::CaseInsensitive))
        return true;
    return !d->searchNamesOnly &&
           object.value(memoKey).toString().contains(d->searchString, Qt::CaseInsensitive);
}

// Names that start with the search string lead. Among those, and among the rest, names and then IDs
// decide, so that the order stays strict.
bool SearchSortFilterModel::sortByName(const QVariantMap& a, const QVariantMap& b) const
{
    const QString nameA = displayedName(a);
    const QString nameB = displayedName(b);
    if (!d->searchString.isEmpty()) {
        const bool startA = nameA.startsWith(d->searchString, Qt::CaseInsensitive);
        if (startA != nameB.startsWith(d->searchString, Qt::CaseInsensitive))
            return startA;
    }
    if (nameA != nameB)
        return nameA < nameB;
    return a.value(idKey).toString() < b.value(idKey).toString();
}

bool SearchSortFilterModel::sortByStateAndName(const QVariantMap& a, const QVariantMap& b) const
{
    const int stateA = stateOf(a);
    const int stateB = stateOf(b);
    if (stateA != stateB)
        return stateA < stateB;
    return sortByName(a, b);
}

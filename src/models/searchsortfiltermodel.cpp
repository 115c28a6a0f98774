#include "searchsortfiltermodel.h"

#include "models/searchindex.h"

struct SearchSortFilterModel::Private
{
    explicit Private(bool searchNamesOnly)
        : index(searchNamesOnly)
    {}

    SearchIndex index;
    QString searchString;
    bool excludeCompletedTasks = false;
    bool excludeCompletedProjects = false;
};

SearchSortFilterModel::SearchSortFilterModel(bool searchNamesOnly, QObject* parent)
    : SortModel(parent)
    , d(std::make_unique<Private>(searchNamesOnly))
{}

SearchSortFilterModel::~SearchSortFilterModel() = default;

// The index follows the source before the proxy's own handlers run, which filter and sort from it.
void SearchSortFilterModel::setSourceModel(QAbstractItemModel* sourceModel)
{
    if (!sourceModel)
        return;
    connect(sourceModel, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex&, int first, int last) {
                for (int row = first; row <= last; ++row)
                    d->index.insert(row, recordAt(this->sourceModel()->index(row, 0)));
            });
    connect(sourceModel, &QAbstractItemModel::rowsRemoved, this,
            [this](const QModelIndex&, int first, int last) { d->index.remove(first, last - first + 1); });
    connect(sourceModel, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& topLeft, const QModelIndex& bottomRight) {
                // An emptied list announces its change with invalid indexes.
                if (!topLeft.isValid() || !bottomRight.isValid())
                    return;
                for (int row = topLeft.row(); row <= bottomRight.row(); ++row)
                    d->index.replace(row, recordAt(this->sourceModel()->index(row, 0)));
                d->index.rankNames();
            });
    const auto rebuild = [this] { rebuildIndex(this->sourceModel()); };
    connect(sourceModel, &QAbstractItemModel::modelReset, this, rebuild);
    connect(sourceModel, &QAbstractItemModel::layoutChanged, this, rebuild);
    connect(sourceModel, &QAbstractItemModel::rowsMoved, this, rebuild);
    rebuildIndex(sourceModel);
    SortModel::setSourceModel(sourceModel);
}

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
    const QString name = object.value(QStringLiteral("NAME")).toString();
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

// One pass filters and sorts everything again, since the order depends on the string as well. The
// proxy's own filter string is left alone: this model's filter reads the index.
void SearchSortFilterModel::setSearchString(const QString& searchString)
{
    if (d->searchString == searchString)
        return;
    d->searchString = searchString;
    emit searchStringChanged(searchString);
    d->index.setSearchString(searchString);
    // Rows that arrived one by one since the last refresh leave the ranks stale.
    d->index.rankNames();
    invalidate();
}

bool SearchSortFilterModel::lessThan(const QModelIndex& sourceLeft, const QModelIndex& sourceRight) const
{
    const SearchIndex::Entry& a = d->index.at(sourceLeft.row());
    const SearchIndex::Entry& b = d->index.at(sourceRight.row());
    if (a.kind != b.kind)
        return a.kind < b.kind;
    if ((a.kind == SearchIndex::Project || a.kind == SearchIndex::Task) && a.state != b.state)
        return a.state < b.state;
    return sortByName(a, b);
}

bool SearchSortFilterModel::filterAcceptsRow(int sourceRow, const QModelIndex&) const
{
    const SearchIndex::Entry& entry = d->index.at(sourceRow);
    return !isExcluded(entry) && entry.matches;
}

void SearchSortFilterModel::rebuildIndex(const QAbstractItemModel* sourceModel)
{
    d->index.clear();
    for (int row = 0; row < sourceModel->rowCount(); ++row)
        d->index.insert(row, recordAt(sourceModel->index(row, 0)));
    d->index.rankNames();
}

bool SearchSortFilterModel::isExcluded(const SearchIndex::Entry& entry) const
{
    if (entry.state != 2)
        return false;
    return (d->excludeCompletedTasks && entry.kind == SearchIndex::Task) ||
           (d->excludeCompletedProjects && entry.kind == SearchIndex::Project);
}

// Names that start with the search string lead. Among those, and among the rest, names and then IDs
// decide, so that the order stays strict.
bool SearchSortFilterModel::sortByName(const SearchIndex::Entry& a, const SearchIndex::Entry& b) const
{
    if (!d->searchString.isEmpty() && a.nameStartsWithSearch != b.nameStartsWithSearch)
        return a.nameStartsWithSearch;
    return d->index.nameLessThan(a, b);
}

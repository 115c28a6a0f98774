#include "searchindex.h"

#include "models/searchsortfiltermodel.h"

#include <algorithm>
#include <numeric>

SearchIndex::SearchIndex(bool searchNamesOnly)
    : m_searchNamesOnly(searchNamesOnly)
{}

SearchIndex::Kind SearchIndex::kindOf(const QVariantMap& object)
{
    if (object.value(QStringLiteral("FOLDER")).toBool())
        return Folder;
    if (object.contains(QStringLiteral("PERIOD")))
        return Task;
    return object.contains(QStringLiteral("CONTEXT")) ? Project : Context;
}

bool SearchIndex::nameLessThan(const Entry& a, const Entry& b) const
{
    return m_ranked ? a.nameRank < b.nameRank : namesLessThan(a, b);
}

void SearchIndex::rankNames()
{
    if (m_ranked)
        return;
    QVector<int> rows(m_entries.size());
    std::iota(rows.begin(), rows.end(), 0);
    std::sort(rows.begin(), rows.end(),
              [this](int a, int b) { return namesLessThan(m_entries.at(a), m_entries.at(b)); });
    for (int rank = 0; rank < rows.size(); ++rank)
        m_entries[rows.at(rank)].nameRank = rank;
    m_ranked = true;
}

bool SearchIndex::namesLessThan(const Entry& a, const Entry& b)
{
    if (a.name != b.name)
        return a.name < b.name;
    return a.id < b.id;
}

void SearchIndex::setSearchString(const QString& searchString)
{
    m_foldedSearchString = searchString.toCaseFolded();
    for (Entry& entry : m_entries)
        match(entry);
}

void SearchIndex::insert(int row, const QVariantMap& object)
{
    m_ranked = false;
    m_entries.insert(row, entryOf(object));
}

void SearchIndex::replace(int row, const QVariantMap& object)
{
    m_ranked = false;
    m_entries[row] = entryOf(object);
}

void SearchIndex::remove(int first, int count)
{
    m_ranked = false;
    m_entries.remove(first, count);
}

void SearchIndex::clear()
{
    m_ranked = false;
    m_entries.clear();
}

SearchIndex::Entry SearchIndex::entryOf(const QVariantMap& object) const
{
    Entry entry;
    entry.kind = kindOf(object);
    entry.state = object.value(QStringLiteral("STATE")).toInt();
    entry.id = object.value(QStringLiteral("ID")).toString();
    entry.name = SearchSortFilterModel::displayedName(object);
    entry.nameRank = 0;
    entry.foldedName = entry.name.toCaseFolded();
    if (!m_searchNamesOnly)
        entry.foldedMemo = object.value(QStringLiteral("MEMO")).toString().toCaseFolded();
    match(entry);
    return entry;
}

// Plain substring semantics: an empty search string matches every row.
void SearchIndex::match(Entry& entry) const
{
    entry.matches =
        entry.foldedName.contains(m_foldedSearchString) || entry.foldedMemo.contains(m_foldedSearchString);
    entry.nameStartsWithSearch = entry.foldedName.startsWith(m_foldedSearchString);
}

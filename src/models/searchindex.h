#pragma once

#include <QString>
#include <QVariantMap>
#include <QVector>

// What the search needs to know of each source row, read once when the row arrives or changes rather
// than from the row's map in every comparison: a keystroke filters and sorts tens of thousands of rows.
// Rows are kept in the order of the source model.
class SearchIndex
{
public:
    // In the order the results show them.
    enum Kind { Folder, Project, Context, Task };

    struct Entry
    {
        Kind kind;
        int state;
        bool matches;
        bool nameStartsWithSearch;
        // The place of the name among all names, once ranked.
        int nameRank;
        QString id;
        // As the interface shows it, and case-folded for matching.
        QString name;
        QString foldedName;
        QString foldedMemo;
    };

    // Orders as the names compare, case-sensitively, then by ID; by rank when the ranks are current.
    bool nameLessThan(const Entry& a, const Entry& b) const;
    // Ranks all names, so that sorting compares numbers instead of strings spread over the heap. Any
    // change of the rows makes the ranks stale until the next call, which does nothing when they are not.
    void rankNames();

    explicit SearchIndex(bool searchNamesOnly);

    static Kind kindOf(const QVariantMap& object);

    // Matches every row against the new string.
    void setSearchString(const QString& searchString);

    void insert(int row, const QVariantMap& object);
    void replace(int row, const QVariantMap& object);
    void remove(int first, int count);
    void clear();

    const Entry& at(int row) const { return m_entries.at(row); }

private:
    static bool namesLessThan(const Entry& a, const Entry& b);
    Entry entryOf(const QVariantMap& object) const;
    void match(Entry& entry) const;

    const bool m_searchNamesOnly;
    QString m_foldedSearchString;
    QVector<Entry> m_entries;
    bool m_ranked = false;
};

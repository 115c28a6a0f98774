#pragma once

#include "models/searchindex.h"
#include "models/sortmodel.h"

#include <memory>

// Matches and orders everything in memory as the user types: folders, projects, contexts and tasks,
// in that order, with names that start with the search string first. In the pickers it matches on
// names alone; the main search looks into memos too.
class SearchSortFilterModel : public SortModel
{
    Q_OBJECT
    Q_PROPERTY(QString searchString READ searchString WRITE setSearchString NOTIFY searchStringChanged)

public:
    explicit SearchSortFilterModel(bool searchNamesOnly, QObject* parent = nullptr);
    ~SearchSortFilterModel() override;

    void setSourceModel(QAbstractItemModel* sourceModel) override;

    QString searchString() const;
    bool excludeCompletedTasks() const;
    void setExcludeCompletedTasks(bool exclude);
    bool excludeCompletedProjects() const;
    void setExcludeCompletedProjects(bool exclude);

    // The name as the interface shows it: the pseudo-objects' fixed names in the interface language.
    static QString displayedName(const QVariantMap& object);

public slots:
    void setSearchString(const QString& searchString);

signals:
    void searchStringChanged(const QString& searchString);

protected:
    bool lessThan(const QModelIndex& sourceLeft, const QModelIndex& sourceRight) const override;
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    void rebuildIndex(const QAbstractItemModel* sourceModel);
    bool isExcluded(const SearchIndex::Entry& entry) const;
    bool sortByName(const SearchIndex::Entry& a, const SearchIndex::Entry& b) const;

    struct Private;
    std::unique_ptr<Private> d;
};

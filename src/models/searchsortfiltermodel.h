#pragma once

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
    bool isExcluded(const QVariantMap& object) const;
    bool matches(const QVariantMap& object) const;
    bool sortByName(const QVariantMap& a, const QVariantMap& b) const;
    bool sortByStateAndName(const QVariantMap& a, const QVariantMap& b) const;

    struct Private;
    std::unique_ptr<Private> d;
};

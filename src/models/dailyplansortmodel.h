#pragma once

#include "models/sortmodel.h"

#include <memory>

// The daily plan's proxy: the groups in the order of their sections, the list's own order inside
// each, and a count per group for the section titles. The counts include rows the filters hide.
class DailyPlanSortModel : public SortModel
{
    Q_OBJECT
    Q_PROPERTY(int activeTaskCount READ activeTaskCount NOTIFY activeTaskCountChanged)
    Q_PROPERTY(int activeProjectCount READ activeProjectCount NOTIFY activeProjectCountChanged)
    Q_PROPERTY(int alsoAvailableTaskCount READ alsoAvailableTaskCount NOTIFY alsoAvailableTaskCountChanged)
    Q_PROPERTY(
        int alsoAvailableProjectCount READ alsoAvailableProjectCount NOTIFY alsoAvailableProjectCountChanged)

public:
    explicit DailyPlanSortModel(QObject* parent = nullptr);
    ~DailyPlanSortModel() override;

    // Hides the objects that are merely available on the day.
    void setExcludeFutureTasks(bool exclude);
    bool isExcludeFutureTasks() const;

    int activeTaskCount() const;
    int activeProjectCount() const;
    int alsoAvailableTaskCount() const;
    int alsoAvailableProjectCount() const;

signals:
    void activeTaskCountChanged(int activeTaskCount);
    void activeProjectCountChanged(int activeProjectCount);
    void alsoAvailableTaskCountChanged(int alsoAvailableTaskCount);
    void alsoAvailableProjectCountChanged(int alsoAvailableProjectCount);

protected:
    // The section of a row is its dailyPlanRole.
    int sortGroupOf(const SortKey& key) const override;
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;
    // A day whose only rows are available ones counts as empty.
    void checkHasActiveObjects() override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

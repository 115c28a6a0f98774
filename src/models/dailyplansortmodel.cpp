#include "dailyplansortmodel.h"

#include "models/dailyplanlistmodel.h"

#include <array>

namespace {

// One counter per group that has one, indexed by the group's value.
using Counters = std::array<int, DailyPlanListModel::CompletedObject>;

bool isAlsoAvailableGroup(int group)
{
    return group == DailyPlanListModel::AlsoAvailableTask ||
           group == DailyPlanListModel::AlsoAvailableProject;
}

} // namespace

struct DailyPlanSortModel::Private
{
    bool excludeFutureTasks = false;
    Counters counters{};
};

DailyPlanSortModel::DailyPlanSortModel(QObject* parent)
    : SortModel(parent)
    , d(std::make_unique<Private>())
{}

DailyPlanSortModel::~DailyPlanSortModel() = default;

void DailyPlanSortModel::setExcludeFutureTasks(bool exclude)
{
    if (d->excludeFutureTasks == exclude)
        return;
    d->excludeFutureTasks = exclude;
    invalidateFilter();
}

bool DailyPlanSortModel::isExcludeFutureTasks() const
{
    return d->excludeFutureTasks;
}

int DailyPlanSortModel::activeTaskCount() const
{
    return d->counters[DailyPlanListModel::DayTask];
}

int DailyPlanSortModel::activeProjectCount() const
{
    return d->counters[DailyPlanListModel::DayProject];
}

int DailyPlanSortModel::alsoAvailableTaskCount() const
{
    return d->counters[DailyPlanListModel::AlsoAvailableTask];
}

int DailyPlanSortModel::alsoAvailableProjectCount() const
{
    return d->counters[DailyPlanListModel::AlsoAvailableProject];
}

int DailyPlanSortModel::sortGroupOf(const SortKey& key) const
{
    const auto* plan = qobject_cast<const DailyPlanListModel*>(sourceModel());
    return plan ? DailyPlanListModel::groupOf(key, plan->date()) : 0;
}

bool DailyPlanSortModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    if (d->excludeFutureTasks && !sourceParent.isValid() &&
        isAlsoAvailableGroup(sortGroupOfSourceRow(sourceRow)))
        return false;
    return SortModel::filterAcceptsRow(sourceRow, sourceParent);
}

void DailyPlanSortModel::checkHasActiveObjects()
{
    const QAbstractItemModel* source = sourceModel();
    if (!source)
        return;
    Counters counters{};
    for (int row = 0; row < source->rowCount(); ++row) {
        const int group = sortGroupOfSourceRow(row);
        if (group < DailyPlanListModel::CompletedObject)
            ++counters[group];
    }
    const Counters old = d->counters;
    d->counters = counters;

    setActiveObjectCount(counters[DailyPlanListModel::DayTask] + counters[DailyPlanListModel::DayProject]);
    using CountSignal = void (DailyPlanSortModel::*)(int);
    const std::array<CountSignal, 4> countSignals{&DailyPlanSortModel::activeTaskCountChanged,
                                                  &DailyPlanSortModel::activeProjectCountChanged,
                                                  &DailyPlanSortModel::alsoAvailableTaskCountChanged,
                                                  &DailyPlanSortModel::alsoAvailableProjectCountChanged};
    for (std::size_t group = 0; group < counters.size(); ++group) {
        if (counters[group] != old[group])
            emit(this->*countSignals[group])(counters[group]);
    }
}

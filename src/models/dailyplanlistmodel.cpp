#include "dailyplanlistmodel.h"

#include "models/sortkey.h"
#include "store/dataobject.h"

#include <utility>

namespace {

class DailyPlanListModelPrivate : public ListModelPrivate
{
public:
    DailyPlanListModelPrivate(const QDate& date, DataFunction dataFunction)
        : ListModelPrivate(std::move(dataFunction))
        , date(date)
    {}

    const QDate date;
};

const DailyPlanListModelPrivate* privateOf(const std::unique_ptr<ListModelPrivate>& d)
{
    return static_cast<const DailyPlanListModelPrivate*>(d.get());
}

// Available before it is due: it has started by the plan date, or never says when it starts, but is
// due later; or it has no due date and has started.
bool isAlsoAvailable(const SortKey& object, const QDate& planDate)
{
    const QDate start = object.startDate();
    const QDate due = object.dueDate();
    const bool started = start.isValid() && start <= planDate;
    if (due.isValid())
        return due > planDate && (!start.isValid() || started);
    return started;
}

} // namespace

DailyPlanListModel::DailyPlanListModel(const QDate& date, DataFunction dataFunction, QObject* parent)
    : ListModel(std::make_unique<DailyPlanListModelPrivate>(date, std::move(dataFunction)), parent)
{}

DailyPlanListModel::~DailyPlanListModel() = default;

QDate DailyPlanListModel::date() const
{
    return privateOf(d)->date;
}

QVariant DailyPlanListModel::data(const QModelIndex& index, int role) const
{
    if (role != dailyPlanRole)
        return ListModel::data(index, role);
    if (!index.isValid() || index.row() >= rowCount())
        return QVariant();
    return groupOf(keyAt(index.row()), date());
}

QHash<int, QByteArray> DailyPlanListModel::roleNames() const
{
    QHash<int, QByteArray> names = ListModel::roleNames();
    names.insert(dailyPlanRole, QByteArrayLiteral("dailyPlanRole"));
    return names;
}

// Overdue objects have no group of their own: they stay with the day's objects, told apart by colour.
DailyPlanListModel::Group DailyPlanListModel::groupOf(const SortKey& object, const QDate& planDate)
{
    if (object.state() == COMPLETED_OBJECT_STATE)
        return CompletedObject;
    if (isAlsoAvailable(object, planDate))
        return object.isTask() ? AlsoAvailableTask : AlsoAvailableProject;
    return object.isTask() ? DayTask : DayProject;
}

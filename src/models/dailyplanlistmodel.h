#pragma once

#include "models/listmodel.h"

#include <QDate>

class SortKey;

// The objects of one day of the daily plan, each placed in one of the plan's five groups.
class DailyPlanListModel : public ListModel
{
    Q_OBJECT

public:
    // Takes the place of the state role: on the daily plan the group is the section key.
    enum Roles { dailyPlanRole = stateRole };

    // The page's sections, in the order they are shown.
    enum Group { DayTask = 0, DayProject, AlsoAvailableTask, AlsoAvailableProject, CompletedObject };
    Q_ENUM(Group)

    DailyPlanListModel(const QDate& date, DataFunction dataFunction, QObject* parent = nullptr);
    ~DailyPlanListModel() override;

    QDate date() const;

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

    // The group of an object on the plan of the given date.
    static Group groupOf(const SortKey& object, const QDate& planDate);
};

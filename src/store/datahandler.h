#pragma once

#include "store/dataobject.h"

#include <QDateTime>
#include <QObject>

#include <memory>

class SortingManager;

// The worker object of the database thread. It gathers the objects that share the one connection
// and does the work that DataManager hands over without a store method of its own: opening the
// database, the calendar indicators and the cleaning of sorted lists.
class DataHandler : public QObject
{
    Q_OBJECT

public:
    DataHandler();
    ~DataHandler() override;

    // Runs on the database thread, so that everything made here belongs to it.
    Q_INVOKABLE void initialize();
    // Answers with indicatorStateForDateChanged.
    Q_INVOKABLE void requestIndicatorStateForDate(const QDateTime& dateTime);
    // Drops the sort data of lists whose objects are gone.
    Q_INVOKABLE void cleanSortedLists();
    // Made by initialize(); lives on the database thread.
    SortingManager* sortingManager() const;

public slots:
    // Follows the sync manager's active flag, on this thread.
    void handleSyncActiveChanged(bool active);

signals:
    void indicatorStateForDateChanged(const QDateTime& dateTime, const IndicatorState& state);
    // A main sync has ended; the receiver re-arms the midnight sync on its own thread.
    void mainSyncFinished();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

#pragma once

#include "store/dataobject.h"

#include <QObject>
#include <QStringList>

#include <memory>

class DatabaseHandler;

// Bookkeeping of which tasks were exported to an external calendar (table `calendar_info`).
class CalendarInfoStore : public QObject
{
    Q_OBJECT

public:
    explicit CalendarInfoStore(DatabaseHandler* database, QObject* parent = nullptr);
    ~CalendarInfoStore() override;

    QList<DOTask> getCalendarTasksToCreate();
    QList<DOTask> getCalendarTasksToUpdate();
    QStringList getCalendarTasksToDelete();
    QStringList getCalendarTaskIds();
    bool handleCalendarTaskCreated(const QString& taskId);
    bool handleCalendarTaskUpdated(const QString& taskId);
    bool clearCalendarInfoTable();
    bool markCalendarTasksToUpdate();
    // Marks an exported task as changed since its export; called after every task update.
    bool markCalendarTaskUpdated(const QString& taskId);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

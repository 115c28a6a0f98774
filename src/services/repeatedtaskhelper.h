#pragma once

#include "store/dataobject.h"

#include <QDate>
#include <QObject>

#include <memory>

class DatabaseHandler;

// Repeating tasks are one stored row each; this class tells on which dates a rule falls and makes
// the occurrence maps that stand for the row on those dates. Lives on the database thread.
class RepeatedTaskHelper : public QObject
{
    Q_OBJECT

public:
    // The program's helper, working on DatabaseHandler::instance().
    static RepeatedTaskHelper* instance();
    explicit RepeatedTaskHelper(DatabaseHandler* database, QObject* parent = nullptr);
    ~RepeatedTaskHelper() override;

    QList<DOTask> getRepeatedDayTasks(const QDate& date);
    int getRepeatedDayTaskCount(const QDate& date);
    bool hasRepeatedTasks(const QDate& date);
    DOTask getRepetitionTaskFromOriginalTask(const DOTask& task, const QDate& date);

    static DOTask cloneRepetitionTask(const DOTask& task, const QDate& date);
    static DOTask repairTaskDates(const DOTask& task);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

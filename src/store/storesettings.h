#pragma once

#include <QStringList>

// The few preferences the store reads for itself. Each read opens its own short-lived QSettings on
// the file, because the store runs on the database thread and must not share the interface
// thread's settings object.
class StoreSettings
{
public:
    // Deleted objects older than this Unix time are out of every trash view.
    static uint trashHorizon();
    static bool showProjectsInDailyPlan();
    // Ids of the objects that stem from seeds, to be left out of the counts.
    static QStringList predefinedIds();
    static QString defaultStartTime();
};

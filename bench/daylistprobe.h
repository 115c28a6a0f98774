#pragma once

#include <QString>

// Peak memory of a process that holds one daily plan list, measured in a process of its own so that
// nothing the benchmarks built before counts. The benchmark program runs itself again in probe mode.
class DayListProbe
{
public:
    // Set in the environment of the probe process to the database it opens.
    static constexpr const char* databaseVariable = "NORVEL_BENCH_DAY_LIST_PROBE";

    // Runs the probe on a copy of the database and returns the process's peak resident memory in KiB,
    // or -1 when the probe failed.
    static long peakKibWithDayList(const QString& databasePath);

    // The probe process itself: opens the database named in the environment, fills today's list and
    // prints the peak resident memory. Returns the process's exit code.
    static int runInThisProcess();
};

#pragma once

#include <QDate>
#include <QString>

// Fills a Norvel database file with a generated account of realistic shape, for benchmarks. The mix
// of tasks, dates relative to `today`:
//   60% active, due at some hour within -30..+60 days, without a start;
//   20% active with a start within -30..+30 days, half of them due 1..14 days after it;
//   10% completed and 5% deleted, due within -30..+60 days;
//    5% repeating (daily, weekly, on listed weekdays, monthly), due within -30..+10 days, with
//       dates the repeat rules accept as they are, so that reading a day writes nothing back.
// Tasks are spread over the projects and the inbox; half of them have a context.
class BenchDatabase
{
public:
    struct Shape
    {
        int taskCount = 10000;
        int projectCount = 50;
        int contextCount = 20;
        QDate today;
        // The same seed gives the same rows.
        quint32 seed = 42;
    };

    // Replaces every task, project and context of the file at filePath by a generated set, in one
    // transaction on a connection of its own. The caller makes sure no other connection holds a
    // transaction on the file. False when the file cannot be opened or a statement fails.
    static bool fill(const QString& filePath, const Shape& shape);
};

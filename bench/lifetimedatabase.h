#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include <memory>

// A database as years of use leave it, made in a temporary copy of the seed: tasks of a realistic
// mix spread over 50 projects and 20 contexts. Of the tasks, 60% are due within 30 days before and
// 60 days after the given day, 20% have a start, 10% are completed, 5% deleted and 5% repeat; one
// project holds 12% of them. The same count and day always give the same rows.
class LifetimeDatabase
{
public:
    static constexpr int projectCount = 50;
    static constexpr int contextCount = 20;

    LifetimeDatabase(int taskCount, const QDate& today);
    ~LifetimeDatabase();
    LifetimeDatabase(const LifetimeDatabase&) = delete;
    LifetimeDatabase& operator=(const LifetimeDatabase&) = delete;

    // False when the seed could not be copied or a row could not be written.
    bool isReady() const;
    QString filePath() const;
    int taskCount() const;
    // The project that holds the most tasks.
    QString busiestProjectId() const;
    // An active task without a repeat rule, due on the given day.
    QString taskDueTodayId() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

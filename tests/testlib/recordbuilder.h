#pragma once

#include <QDateTime>
#include <QString>
#include <QVariantMap>

// Builds the maps that stand for tasks, projects, folders and contexts, so that tests say what
// matters about a record and nothing else.
class RecordBuilder
{
public:
    static constexpr const char* inboxId = "f206bbf9-8d12-4482-a142-d02efefe8bbc";
    static constexpr const char* oneStepActionsId = "a248f791-d83e-49ca-93df-32d9718cdb91";

    static RecordBuilder task(const QString& name = QStringLiteral("Task"));
    static RecordBuilder project(const QString& name = QStringLiteral("Project"));
    static RecordBuilder folder(const QString& name = QStringLiteral("Folder"));
    static RecordBuilder context(const QString& name = QStringLiteral("Context"));

    RecordBuilder& withId(const QString& id);
    RecordBuilder& named(const QString& name);
    RecordBuilder& inParent(const QString& parentId);
    RecordBuilder& withMemo(const QString& memo);
    RecordBuilder& withState(int state);
    RecordBuilder& startingAt(const QDateTime& start);
    RecordBuilder& dueAt(const QDateTime& due);
    RecordBuilder& repeating(const QString& period);
    RecordBuilder& withContext(const QString& contextId);
    RecordBuilder& withTimestamp(uint timestamp);
    RecordBuilder& withLevel(int level);
    RecordBuilder& fromServer();
    RecordBuilder& with(const QString& key, const QVariant& value);
    RecordBuilder& without(const QString& key);

    QVariantMap build() const { return m_record; }
    operator QVariantMap() const { return m_record; }

private:
    QVariantMap m_record;
};

// A wall-clock value as the store keeps it: the chosen date and time labelled UTC.
QDateTime wallClock(const QDate& date, const QTime& time = QTime(0, 0));

#include "recordbuilder.h"

RecordBuilder RecordBuilder::task(const QString& name)
{
    RecordBuilder builder;
    builder.m_record = {
        {QStringLiteral("NAME"), name},        {QStringLiteral("PARENT"), QString::fromLatin1(inboxId)},
        {QStringLiteral("MEMO"), QString()},   {QStringLiteral("CONTEXT"), QString()},
        {QStringLiteral("PERIOD"), QString()}, {QStringLiteral("START"), QVariant()},
        {QStringLiteral("DUE"), QVariant()}};
    return builder;
}

RecordBuilder RecordBuilder::project(const QString& name)
{
    RecordBuilder builder;
    builder.m_record = {{QStringLiteral("NAME"), name},      {QStringLiteral("PARENT"), QString()},
                        {QStringLiteral("MEMO"), QString()}, {QStringLiteral("CONTEXT"), QString()},
                        {QStringLiteral("FOLDER"), false},   {QStringLiteral("START"), QVariant()},
                        {QStringLiteral("DUE"), QVariant()}};
    return builder;
}

RecordBuilder RecordBuilder::folder(const QString& name)
{
    RecordBuilder builder = project(name);
    builder.m_record.insert(QStringLiteral("FOLDER"), true);
    return builder;
}

RecordBuilder RecordBuilder::context(const QString& name)
{
    RecordBuilder builder;
    builder.m_record = {{QStringLiteral("NAME"), name},
                        {QStringLiteral("PARENT"), QString()},
                        {QStringLiteral("MEMO"), QString()}};
    return builder;
}

RecordBuilder& RecordBuilder::withId(const QString& id)
{
    return with(QStringLiteral("ID"), id);
}

RecordBuilder& RecordBuilder::named(const QString& name)
{
    return with(QStringLiteral("NAME"), name);
}

RecordBuilder& RecordBuilder::inParent(const QString& parentId)
{
    return with(QStringLiteral("PARENT"), parentId);
}

RecordBuilder& RecordBuilder::withMemo(const QString& memo)
{
    return with(QStringLiteral("MEMO"), memo);
}

RecordBuilder& RecordBuilder::withState(int state)
{
    return with(QStringLiteral("STATE"), state);
}

RecordBuilder& RecordBuilder::startingAt(const QDateTime& start)
{
    return with(QStringLiteral("START"), start);
}

RecordBuilder& RecordBuilder::dueAt(const QDateTime& due)
{
    return with(QStringLiteral("DUE"), due);
}

RecordBuilder& RecordBuilder::repeating(const QString& period)
{
    return with(QStringLiteral("PERIOD"), period);
}

RecordBuilder& RecordBuilder::withContext(const QString& contextId)
{
    return with(QStringLiteral("CONTEXT"), contextId);
}

RecordBuilder& RecordBuilder::withTimestamp(uint timestamp)
{
    return with(QStringLiteral("TIMESTAMP"), timestamp);
}

RecordBuilder& RecordBuilder::withLevel(int level)
{
    return with(QStringLiteral("LEVEL"), level);
}

RecordBuilder& RecordBuilder::fromServer()
{
    return with(QStringLiteral("SYNC"), true);
}

RecordBuilder& RecordBuilder::with(const QString& key, const QVariant& value)
{
    m_record.insert(key, value);
    return *this;
}

RecordBuilder& RecordBuilder::without(const QString& key)
{
    m_record.remove(key);
    return *this;
}

QDateTime wallClock(const QDate& date, const QTime& time)
{
    return QDateTime(date, time, Qt::UTC);
}

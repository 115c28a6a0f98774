#include "benchdatabase.h"

#include <QDateTime>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <QVariantList>

#include <functional>

namespace {
const QString inboxId = QStringLiteral("f206bbf9-8d12-4482-a142-d02efefe8bbc");
// The store writes missing values as empty text; a null QString would arrive as NULL.
const QString noText = QStringLiteral("");
const QStringList repeatRules = {QStringLiteral("d;1"), QStringLiteral("d;3"), QStringLiteral("w;1"),
                                 QStringLiteral("w;1;1,3,5"), QStringLiteral("m;1")};

// Columns of one table, each bound as a list of values so that a whole table goes in one batch.
class TableBatch
{
public:
    explicit TableBatch(const QStringList& columns)
        : m_columns(columns)
        , m_values(columns.size())
    {}

    void addRow(const QVariantList& row)
    {
        for (int column = 0; column < m_values.size(); ++column)
            m_values[column].append(row.at(column));
    }

    bool insertInto(QSqlDatabase& connection, const QString& table) const
    {
        QSqlQuery query(connection);
        const QString placeholders = QStringLiteral("?,").repeated(m_columns.size()).chopped(1);
        query.prepare(QStringLiteral("INSERT INTO %1(%2) VALUES(%3)")
                          .arg(table, m_columns.join(QLatin1Char(',')), placeholders));
        for (const QVariantList& values : m_values)
            query.addBindValue(values);
        if (query.execBatch())
            return true;
        qWarning("Bench database: %s", qPrintable(query.lastError().text()));
        return false;
    }

private:
    QStringList m_columns;
    QVector<QVariantList> m_values;
};

// Monday, Wednesday or Friday, the days of the listed-weekday rule.
bool isListedWeekday(const QDate& date)
{
    const int weekday = date.dayOfWeek();
    return weekday == 1 || weekday == 3 || weekday == 5;
}

QString objectId(const char* kind, int number)
{
    return QStringLiteral("%1-%2").arg(QLatin1String(kind)).arg(number, 8, 10, QLatin1Char('0'));
}

class Generator
{
public:
    explicit Generator(const BenchDatabase::Shape& shape)
        : m_shape(shape)
        , m_random(shape.seed)
        , m_timestamp(QDateTime(shape.today, QTime(12, 0), Qt::UTC).toSecsSinceEpoch())
    {}

    // Stored dates are the chosen wall clock labelled UTC, in Unix seconds; "" is no date.
    QVariant dateAt(int dayOffset) { return dateAt(dayOffset, 8 + m_random.bounded(12)); }

    QVariant dateAt(int dayOffset, int hour) const
    {
        return QDateTime(m_shape.today.addDays(dayOffset), QTime(hour, 0), Qt::UTC).toSecsSinceEpoch();
    }

    int dayWithin(int first, int last) { return first + m_random.bounded(last - first + 1); }

    QVariantList taskRow(int number)
    {
        QVariant start = noText;
        QVariant due = noText;
        QString period = noText;
        int state = 0;
        const int kind = m_random.bounded(100);
        if (kind < 60) {
            due = dateAt(dayWithin(-30, 60));
        } else if (kind < 80) {
            const int startDay = dayWithin(-30, 30);
            start = dateAt(startDay);
            if (m_random.bounded(2) == 0)
                due = dateAt(startDay + dayWithin(1, 14));
        } else if (kind < 95) {
            due = dateAt(dayWithin(-30, 60));
            state = kind < 90 ? 2 : 1;
        } else {
            period = repeatRules.at(m_random.bounded(repeatRules.size()));
            int dueDay = dayWithin(-30, 10);
            // A listed-weekday rule is anchored on one of its days.
            while (period.count(QLatin1Char(';')) == 2 && !isListedWeekday(m_shape.today.addDays(dueDay)))
                ++dueDay;
            const int hour = 9 + m_random.bounded(10);
            start = dateAt(dueDay, hour - 1);
            due = dateAt(dueDay, hour);
        }
        const int project = m_random.bounded(m_shape.projectCount + 1);
        const int context = m_random.bounded(m_shape.contextCount * 2);
        return {objectId("task", number),
                QStringLiteral("Task %1").arg(number),
                project == m_shape.projectCount ? inboxId : objectId("project", project),
                noText,
                start,
                due,
                context < m_shape.contextCount ? objectId("context", context) : noText,
                period,
                state,
                QString::number(m_timestamp - m_random.bounded(90 * 24 * 3600)),
                1,
                0};
    }

    QVariantList projectRow(int number)
    {
        // A fifth of the projects carry a due date and show in the daily plan.
        const QVariant due = number % 5 == 0 ? dateAt(dayWithin(-10, 30)) : QVariant(noText);
        return {objectId("project", number),
                QStringLiteral("Project %1").arg(number),
                noText,
                0,
                noText,
                noText,
                noText,
                due,
                0,
                m_timestamp,
                1,
                0};
    }

    QVariantList contextRow(int number) const
    {
        return {objectId("context", number),
                QStringLiteral("@Context %1").arg(number),
                noText,
                noText,
                0,
                m_timestamp,
                1,
                0};
    }

private:
    const BenchDatabase::Shape m_shape;
    QRandomGenerator m_random;
    const qint64 m_timestamp;
};

TableBatch rowsOf(const QStringList& columns, int count, const std::function<QVariantList(int)>& row)
{
    TableBatch batch(columns);
    for (int number = 0; number < count; ++number)
        batch.addRow(row(number));
    return batch;
}

bool replaceAll(QSqlDatabase& connection, const BenchDatabase::Shape& shape)
{
    Generator generator(shape);
    const TableBatch tasks = rowsOf({"id", "name", "parent", "memo", "start", "due", "context", "period",
                                     "state", "timestamp", "synced", "local"},
                                    shape.taskCount, [&](int number) { return generator.taskRow(number); });
    const TableBatch projects =
        rowsOf({"id", "name", "parent", "folder", "memo", "context", "start", "due", "state", "timestamp",
                "synced", "local"},
               shape.projectCount, [&](int number) { return generator.projectRow(number); });
    const TableBatch contexts =
        rowsOf({"id", "name", "parent", "memo", "state", "timestamp", "synced", "local"}, shape.contextCount,
               [&](int number) { return generator.contextRow(number); });
    QSqlQuery query(connection);
    for (const char* table : {"task", "project", "context"}) {
        if (!query.exec(QStringLiteral("DELETE FROM %1").arg(QLatin1String(table))))
            return false;
    }
    return tasks.insertInto(connection, QStringLiteral("task")) &&
           projects.insertInto(connection, QStringLiteral("project")) &&
           contexts.insertInto(connection, QStringLiteral("context"));
}
} // namespace

bool BenchDatabase::fill(const QString& filePath, const Shape& shape)
{
    const QString connectionName = QStringLiteral("bench_database_fill");
    bool filled = false;
    {
        QSqlDatabase connection = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
        connection.setDatabaseName(filePath);
        if (connection.open() && connection.transaction()) {
            filled = replaceAll(connection, shape) && connection.commit();
            if (!filled)
                connection.rollback();
        }
        connection.close();
    }
    QSqlDatabase::removeDatabase(connectionName);
    return filled;
}

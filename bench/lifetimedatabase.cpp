#include "lifetimedatabase.h"

#include "store/dataobject.h"

#include <QDateTime>
#include <QFile>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUuid>
#include <QVariantList>

#include <array>

namespace {
const qint64 daySeconds = 24 * 3600;
const int firstTimestamp = 1500000000;

QString makeId(QRandomGenerator& random)
{
    // A GUID of the random stream rather than of the clock, so that two runs write the same rows.
    std::array<quint32, 4> words{};
    random.fillRange(words.data(), int(words.size()));
    QByteArray bytes(reinterpret_cast<const char*>(words.data()), int(sizeof(words)));
    return QUuid::fromRfc4122(bytes).toString(QUuid::WithoutBraces);
}

qint64 wallClockSeconds(const QDate& day, int minutesIntoDay)
{
    return QDateTime(day, QTime(0, 0), Qt::UTC).toSecsSinceEpoch() + minutesIntoDay * 60;
}

// The dates, state and rule of one task, drawn from the mix.
struct TaskShape
{
    QVariant start = QString("");
    QVariant due = QString("");
    int state = DEFAULT_OBJECT_STATE;
    QString period = QString("");

    static TaskShape draw(QRandomGenerator& random, const QDate& today)
    {
        TaskShape shape;
        const bool dated = random.bounded(100) < 60;
        const bool started = random.bounded(100) < 20;
        const int roll = random.bounded(100);
        const qint64 due = wallClockSeconds(today.addDays(random.bounded(-30, 61)), random.bounded(24 * 60));
        if (dated)
            shape.due = due;
        if (started && dated)
            shape.start = due - random.bounded(1, 15) * daySeconds;
        else if (started)
            shape.start = wallClockSeconds(today.addDays(random.bounded(-30, 31)), 8 * 60);
        if (roll < 10) {
            shape.state = COMPLETED_OBJECT_STATE;
        } else if (roll < 15) {
            shape.state = random.bounded(2) == 0 ? DELETED_OBJECT_STATE : COMPLETED_AND_DELETED_OBJECT_STATE;
        } else if (roll < 20) {
            static const QStringList rules{"d;1", "d;3", "w;1", "w;2", "w;1;1,3,5", "m;1"};
            shape.period = rules.at(random.bounded(rules.size()));
            // A rule needs a due date to count from.
            if (!dated)
                shape.due = due;
        }
        return shape;
    }
};
} // namespace

struct LifetimeDatabase::Private
{
    QTemporaryDir directory;
    QString filePath;
    QString connectionName;
    int taskCount = 0;
    QDate today;
    QRandomGenerator random{20240101};
    QStringList projectIds;
    QStringList contextIds;
    QString taskDueTodayId;
    bool ready = false;

    bool write();
    bool writeContexts(QSqlQuery& query);
    bool writeProjects(QSqlQuery& query);
    bool writeTasks(QSqlQuery& query);
    QString drawProject();
    QString drawContext();
};

bool LifetimeDatabase::Private::write()
{
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
    database.setDatabaseName(filePath);
    bool written = database.open();
    if (written) {
        QSqlQuery query(database);
        // Nothing else sees the file until it is finished, so it may skip the journal and the syncs.
        query.exec(QStringLiteral("PRAGMA journal_mode = OFF"));
        query.exec(QStringLiteral("PRAGMA synchronous = OFF"));
        written = database.transaction() && writeContexts(query) && writeProjects(query) &&
                  writeTasks(query) && database.commit();
        if (!written)
            qWarning("Lifetime database not written: %s", qPrintable(query.lastError().text()));
    }
    database.close();
    database = QSqlDatabase();
    QSqlDatabase::removeDatabase(connectionName);
    return written;
}

bool LifetimeDatabase::Private::writeContexts(QSqlQuery& query)
{
    if (!query.prepare(QStringLiteral("INSERT INTO context(id, name, parent, memo, state, timestamp, synced, "
                                      "local) VALUES(?, ?, '', '', 0, ?, 1, 0)")))
        return false;
    for (int number = 0; number < contextCount; ++number) {
        contextIds.append(makeId(random));
        query.addBindValue(contextIds.last());
        query.addBindValue(QStringLiteral("Context %1").arg(number));
        query.addBindValue(firstTimestamp + number);
        if (!query.exec())
            return false;
    }
    return true;
}

bool LifetimeDatabase::Private::writeProjects(QSqlQuery& query)
{
    if (!query.prepare(QStringLiteral(
            "INSERT INTO project(id, name, parent, memo, start, due, context, folder, state, timestamp, "
            "synced, local) VALUES(?, ?, '', '', '', '', ?, 0, 0, ?, 1, 0)")))
        return false;
    for (int number = 0; number < projectCount; ++number) {
        projectIds.append(makeId(random));
        query.addBindValue(projectIds.last());
        query.addBindValue(QStringLiteral("Project %1").arg(number));
        query.addBindValue(drawContext());
        query.addBindValue(firstTimestamp + number);
        if (!query.exec())
            return false;
    }
    return true;
}

bool LifetimeDatabase::Private::writeTasks(QSqlQuery& query)
{
    if (!query.prepare(QStringLiteral(
            "INSERT INTO task(id, name, parent, memo, start, due, context, period, state, timestamp, synced, "
            "local) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 1, 0)")))
        return false;
    for (int number = 0; number < taskCount; ++number) {
        const TaskShape shape = TaskShape::draw(random, today);
        const QString id = makeId(random);
        const QString timestamp = QString::number(firstTimestamp + number * 600 + random.bounded(600));
        const QVariantList values{id,
                                  QStringLiteral("Task %1").arg(number),
                                  drawProject(),
                                  random.bounded(4) == 0 ? QStringLiteral("A few words about it")
                                                         : QString(""),
                                  shape.start,
                                  shape.due,
                                  drawContext(),
                                  shape.period,
                                  shape.state,
                                  timestamp};
        for (const QVariant& value : values)
            query.addBindValue(value);
        if (!query.exec())
            return false;
        const bool dueToday = QDateTime::fromSecsSinceEpoch(shape.due.toLongLong(), Qt::UTC).date() == today;
        if (taskDueTodayId.isEmpty() && dueToday && shape.state == DEFAULT_OBJECT_STATE &&
            shape.period.isEmpty())
            taskDueTodayId = id;
    }
    return true;
}

QString LifetimeDatabase::Private::drawProject()
{
    // One project collects 12% of all tasks, the others share the rest evenly.
    if (random.bounded(100) < 12)
        return projectIds.first();
    return projectIds.at(1 + random.bounded(projectCount - 1));
}

QString LifetimeDatabase::Private::drawContext()
{
    return random.bounded(2) == 0 ? QString("") : contextIds.at(random.bounded(contextCount));
}

LifetimeDatabase::LifetimeDatabase(int taskCount, const QDate& today)
    : d(std::make_unique<Private>())
{
    static int fixtureNumber = 0;
    d->taskCount = taskCount;
    d->today = today;
    d->filePath = d->directory.filePath(QStringLiteral("norvel_data.db"));
    d->connectionName = QStringLiteral("lifetime_database_%1").arg(++fixtureNumber);
    const bool copied = QFile::copy(QStringLiteral(":/norvel_data.db"), d->filePath) &&
                        QFile::setPermissions(d->filePath, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    d->ready = copied && d->write();
}

LifetimeDatabase::~LifetimeDatabase() = default;

bool LifetimeDatabase::isReady() const
{
    return d->ready;
}

QString LifetimeDatabase::filePath() const
{
    return d->filePath;
}

int LifetimeDatabase::taskCount() const
{
    return d->taskCount;
}

QString LifetimeDatabase::busiestProjectId() const
{
    return d->projectIds.value(0);
}

QString LifetimeDatabase::taskDueTodayId() const
{
    return d->taskDueTodayId;
}

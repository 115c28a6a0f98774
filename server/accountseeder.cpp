#include "accountseeder.h"

#include "objectstore.h"

#include <QDateTime>
#include <QJsonObject>
#include <QUuid>

namespace {

constexpr int norvelBoxInbox = 1;
constexpr int oneStepActionsInbox = 2;

struct Names
{
    const char* english;
    const char* russian;
};

struct SeedTask
{
    int code;
    Names name;
    // 0: the Norvel Box, 1: the demo project, 2: One Step Actions.
    int home;
    // Index into the demo contexts, or -1.
    int context;
};

const Names folders[] = {{"Business", "Работа"}, {"Personal", "Личное"}};
const int folderCodes[] = {1, 2};
const Names demoProject = {"Get to know Norvel (demo project)", "Знакомство с Norvel (демо-проект)"};
const Names contexts[] = {
    {"@home (demo context)", "Дома (демо-контекст)"},
    {"@office (demo context)", "В офисе (демо-контекст)"},
    {"In the morning (demo context)", "С утра (демо-контекст)"},
    {"@garage (demo context)", "В гараже (демо-контекст)"},
    {"If I have some time (demo context)", "Если есть свободное время (демо-контекст)"},
    {"Online (demo context)", "В сети (демо-контекст)"},
};
const SeedTask tasks[] = {
    {200, {"Write down whatever comes to mind", "Запишите всё, что приходит в голову"}, 0, -1},
    {201, {"Sort the Norvel Box into projects", "Разберите Norvel Box по проектам"}, 1, -1},
    {202, {"Tag a task with a context", "Отметьте задачу контекстом"}, 1, 0},
    {203, {"Plan today in the daily plan", "Спланируйте день в ежедневном плане"}, 1, 2},
    {204, {"Call back about the meeting", "Перезвонить насчёт встречи"}, 2, 5},
};

QString newId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

class Seeder
{
public:
    Seeder(qint64 accountId, bool russian)
        : m_accountId(accountId)
        , m_russian(russian)
        , m_timestamp(QDateTime::currentSecsSinceEpoch())
    {}

    QString text(const Names& names) const
    {
        return QString::fromUtf8(m_russian ? names.russian : names.english);
    }

    QString add(const QString& kind, QJsonObject object, int predefined, int inbox)
    {
        const QString id = newId();
        object.insert(QStringLiteral("ID"), id);
        object.insert(QStringLiteral("MEMO"), QString());
        object.insert(QStringLiteral("STATE"), 0);
        object.insert(QStringLiteral("TIMESTAMP"), static_cast<double>(m_timestamp));
        if (!object.contains(QStringLiteral("PARENT")))
            object.insert(QStringLiteral("PARENT"), QString());
        if (kind != QLatin1String("context")) {
            object.insert(QStringLiteral("START"), QString());
            object.insert(QStringLiteral("DUE"), QString());
            if (!object.contains(QStringLiteral("CONTEXT")))
                object.insert(QStringLiteral("CONTEXT"), QString());
        }
        m_ok = m_ok && ObjectStore::insert(m_accountId, 1, kind, object, predefined, inbox);
        return id;
    }

    QString addProject(const QString& name, const QString& parent, bool folder, int predefined, int inbox)
    {
        return add(QStringLiteral("project"),
                   {{QStringLiteral("NAME"), name},
                    {QStringLiteral("PARENT"), parent},
                    {QStringLiteral("FOLDER"), folder}},
                   predefined, inbox);
    }

    bool ok() const { return m_ok; }

private:
    qint64 m_accountId;
    bool m_russian;
    qint64 m_timestamp;
    bool m_ok = true;
};

} // namespace

bool AccountSeeder::seed(qint64 accountId, bool russian)
{
    Seeder seeder(accountId, russian);
    const QString norvelBox =
        seeder.addProject(QStringLiteral("Norvel Box"), QString(), false, 0, norvelBoxInbox);
    const QString oneStepActions = seeder.addProject(
        seeder.text({"One Step Actions", "Одношаговые действия"}), QString(), false, 0, oneStepActionsInbox);
    QString folderIds[2];
    for (int index = 0; index < 2; ++index)
        folderIds[index] =
            seeder.addProject(seeder.text(folders[index]), QString(), true, folderCodes[index], 0);
    const QString project = seeder.addProject(seeder.text(demoProject), folderIds[1], false, 100, 0);
    QString contextIds[6];
    const int contextCodes[] = {300, 301, 302, 303, 304, 305};
    for (int index = 0; index < 6; ++index)
        contextIds[index] =
            seeder.add(QStringLiteral("context"), {{QStringLiteral("NAME"), seeder.text(contexts[index])}},
                       contextCodes[index], 0);
    const QString homes[] = {norvelBox, project, oneStepActions};
    for (const SeedTask& task : tasks) {
        seeder.add(QStringLiteral("task"),
                   {{QStringLiteral("NAME"), seeder.text(task.name)},
                    {QStringLiteral("PARENT"), homes[task.home]},
                    {QStringLiteral("CONTEXT"), task.context < 0 ? QString() : contextIds[task.context]},
                    {QStringLiteral("PERIOD"), QString()}},
                   task.code, 0);
    }
    return seeder.ok();
}

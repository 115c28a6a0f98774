#include "serverlog.h"

Q_LOGGING_CATEGORY(serverLog, "norvel.server")

void setUpServerLog(const QString& level)
{
    qSetMessagePattern(QStringLiteral("%{time yyyy-MM-ddThh:mm:ss.zzz} %{type} %{message}"));
    const QStringList levels = {QStringLiteral("debug"), QStringLiteral("info"), QStringLiteral("warning"),
                                QStringLiteral("critical")};
    const int least = level == QLatin1String("error") ? 3 : levels.indexOf(level);
    QStringList rules;
    for (int index = 0; index < levels.size(); ++index)
        rules
            << QStringLiteral("norvel.server.%1=%2").arg(levels.at(index), index >= least ? "true" : "false");
    QLoggingCategory::setFilterRules(rules.join(QLatin1Char('\n')));
}

#pragma once

#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(serverLog)

// Shows the server's messages from the given level up ("debug", "info", "warning", "error"), each
// line stamped with the time in UTC.
void setUpServerLog(const QString& level);

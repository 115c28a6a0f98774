#pragma once

#include <QDateTime>
#include <QString>

// One reminder as the desktop shows it, and as the schedule keeps it until its moment.
struct UserNotification
{
    QString identifier;
    QString title;
    QString informativeText;
    QDateTime deliveryDateTime;
    QString actionButtonTitle;
};

#pragma once

#include <QString>

// The desktop's choice of application for "mailto:" links, as the freedesktop tools report it.
class DesktopMailHandler
{
public:
    // The desktop file name of the default handler, such as "thunderbird.desktop", or empty when the
    // desktop names none or cannot be asked.
    static QString defaultHandler();
};

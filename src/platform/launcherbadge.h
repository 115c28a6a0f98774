#pragma once

#include <QObject>

#include <memory>

class QDBusConnection;

// The count on the application's launcher icon, published through the launcher-entry D-Bus signal
// that docks and panels on Linux listen to.
class LauncherBadge : public QObject
{
    Q_OBJECT

public:
    static constexpr const char* applicationUri = "application://norvel.desktop";
    static constexpr const char* objectPath = "/com/kelmora/norvel/launcherentry";
    static constexpr const char* interfaceName = "com.canonical.Unity.LauncherEntry";
    static constexpr const char* signalName = "Update";

    // Publishes on the session bus.
    explicit LauncherBadge(QObject* parent = nullptr);
    explicit LauncherBadge(const QDBusConnection& connection, QObject* parent = nullptr);
    ~LauncherBadge() override;

    // Shows count on the icon, or hides the badge for 0 and below. Returns whether the signal went out;
    // without a bus nothing is sent and nothing else happens.
    bool setCount(int count);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

#pragma once

#include <QObject>

#include <memory>

class QDBusConnection;
class QDBusVariant;

// The desktop's light or dark preference, read from the freedesktop settings portal and followed
// while the program runs. Without a portal the desktop counts as light.
class AppearancePortal : public QObject
{
    Q_OBJECT

public:
    static constexpr const char* serviceName = "org.freedesktop.portal.Desktop";
    static constexpr const char* objectPath = "/org/freedesktop/portal/desktop";
    static constexpr const char* interfaceName = "org.freedesktop.portal.Settings";
    static constexpr const char* appearanceNamespace = "org.freedesktop.appearance";
    static constexpr const char* colorSchemeKey = "color-scheme";
    // The portal's value for "prefer dark"; 0 is no preference and 2 prefers light.
    static constexpr uint preferDark = 1;

    // Asks the session bus.
    static AppearancePortal* instance();
    explicit AppearancePortal(const QDBusConnection& bus, QObject* parent = nullptr);
    ~AppearancePortal() override;

    bool isDark() const;

signals:
    void darkChanged(bool dark);

private slots:
    void handleSettingChanged(const QString& settingNamespace, const QString& key, const QDBusVariant& value);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

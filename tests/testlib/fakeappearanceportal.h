#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QThread>

// The desktop's settings portal as far as the appearance goes, served on a test's own session bus:
// no portal daemon runs where the tests run. It answers from a thread of its own, since the program
// asks with a blocking call.
class FakeAppearancePortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    // Registers under the portal's name and path; colorScheme 1 prefers dark, 0 has no preference.
    FakeAppearancePortal(const QDBusConnection& bus, uint colorScheme);
    ~FakeAppearancePortal() override;

    // Announces a new value the way the portal does.
    void changeColorScheme(uint colorScheme);

public slots:
    QDBusVariant Read(const QString& settingNamespace, const QString& key);

signals:
    void SettingChanged(const QString& settingNamespace, const QString& key, const QDBusVariant& value);

private:
    QThread m_thread;
    QDBusConnection m_bus;
    uint m_colorScheme;
};

#include "fakeappearanceportal.h"

#include "platform/appearanceportal.h"

FakeAppearancePortal::FakeAppearancePortal(const QDBusConnection& bus, uint colorScheme)
    : m_bus(bus)
    , m_colorScheme(colorScheme)
{
    m_thread.start();
    moveToThread(&m_thread);
    m_bus.registerService(QString::fromLatin1(AppearancePortal::serviceName));
    m_bus.registerObject(QString::fromLatin1(AppearancePortal::objectPath), this,
                         QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
}

FakeAppearancePortal::~FakeAppearancePortal()
{
    m_bus.unregisterObject(QString::fromLatin1(AppearancePortal::objectPath));
    m_bus.unregisterService(QString::fromLatin1(AppearancePortal::serviceName));
    m_thread.quit();
    m_thread.wait();
}

void FakeAppearancePortal::changeColorScheme(uint colorScheme)
{
    m_colorScheme = colorScheme;
    emit SettingChanged(QString::fromLatin1(AppearancePortal::appearanceNamespace),
                        QString::fromLatin1(AppearancePortal::colorSchemeKey), QDBusVariant(colorScheme));
}

QDBusVariant FakeAppearancePortal::Read(const QString& settingNamespace, const QString& key)
{
    Q_UNUSED(settingNamespace)
    Q_UNUSED(key)
    // The portal wraps the value in one variant more than the signal does.
    return QDBusVariant(QVariant::fromValue(QDBusVariant(m_colorScheme)));
}

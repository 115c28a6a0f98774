#include "launcherentrylistener.h"

#include <QAtomicInt>

namespace {
QString nextConnectionName()
{
    static QAtomicInt counter;
    return QStringLiteral("launcher-entry-listener-%1").arg(counter.fetchAndAddRelaxed(1));
}
} // namespace

LauncherEntryListener::LauncherEntryListener(const QString& busAddress)
    : m_connection(QDBusConnection::connectToBus(busAddress, nextConnectionName()))
{
    m_listening =
        m_connection.connect(QString(), QString(), QStringLiteral("com.canonical.Unity.LauncherEntry"),
                             QStringLiteral("Update"), this, SLOT(receive(QString, QVariantMap)));
}

LauncherEntryListener::~LauncherEntryListener()
{
    QDBusConnection::disconnectFromBus(m_connection.name());
}

void LauncherEntryListener::receive(const QString& applicationUri, const QVariantMap& properties)
{
    emit updated(applicationUri, properties);
}

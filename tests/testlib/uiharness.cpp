#include "uiharness.h"

#include "core/guimanager.h"
#include "core/startup.h"

#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest>

namespace {
constexpr int waitMilliseconds = 5000;

// Cached pages keep their items while hidden, so a name can be there twice: the visible one wins.
QObject* findIn(QObject* root, const QString& objectName, bool visibleOnly)
{
    auto* item = qobject_cast<QQuickItem*>(root);
    if (!root || (visibleOnly && item && !item->isVisible()))
        return nullptr;
    if (root->objectName() == objectName)
        return root;
    if (item) {
        const auto childItems = item->childItems();
        for (QQuickItem* child : childItems) {
            if (QObject* found = findIn(child, objectName, visibleOnly))
                return found;
        }
    }
    const auto children = root->children();
    for (QObject* child : children) {
        if (QObject* found = findIn(child, objectName, visibleOnly))
            return found;
    }
    return nullptr;
}
} // namespace

UiHarness::UiHarness()
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
    QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
}

bool UiHarness::start()
{
    m_messages = std::make_unique<QmlMessageCollector>();
    Startup::makeDirectories();
    const bool firstLaunch = Startup::prepareDatabase();
    GuiManager* manager = GuiManager::instance();
    manager->initialize();
    manager->setContextProperty(QStringLiteral("FIRST_LAUNCH"), firstLaunch);
    manager->loadUi();
    manager->showMainWindow();
    return window() && QTest::qWaitForWindowExposed(window(), waitMilliseconds);
}

QQuickWindow* UiHarness::window() const
{
    return qobject_cast<QQuickWindow*>(GuiManager::instance()->mainWindow());
}

QObject* UiHarness::object(const QString& objectName) const
{
    if (!window())
        return nullptr;
    if (QObject* found = findIn(window()->contentItem(), objectName, true))
        return found;
    return findIn(window(), objectName, false);
}

QQuickItem* UiHarness::item(const QString& objectName) const
{
    return qobject_cast<QQuickItem*>(object(objectName));
}

QVariant UiHarness::property(const QString& objectName, const char* name) const
{
    const QObject* found = object(objectName);
    return found ? found->property(name) : QVariant();
}

QString UiHarness::text(const QString& objectName) const
{
    return property(objectName, "text").toString();
}

bool UiHarness::click(const QString& objectName)
{
    QQuickItem* target = nullptr;
    const bool ready = QTest::qWaitFor(
        [&] {
            target = item(objectName);
            return target && target->isVisible() && target->isEnabled() && target->width() > 0;
        },
        waitMilliseconds);
    return ready && click(target);
}

bool UiHarness::click(QQuickItem* target, const QPoint& position)
{
    const QPointF local = position.x() < 0 ? QPointF(target->width() / 2, target->height() / 2) : position;
    const QPoint scenePoint = target->mapToScene(local).toPoint();
    if (!window()->contentItem()->contains(scenePoint))
        return false;
    // Moving there first ends the hover over the last clicked item, as a real pointer would.
    QTest::mouseMove(window(), scenePoint);
    QTest::mouseClick(window(), Qt::LeftButton, Qt::NoModifier, scenePoint);
    QTest::qWait(10);
    return true;
}

void UiHarness::pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(window(), key, modifiers);
    QTest::qWait(10);
}

QStringList UiHarness::qmlMessages() const
{
    return m_messages ? m_messages->messages() : QStringList();
}

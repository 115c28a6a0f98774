#pragma once

#include "testlib/privatesessionbus.h"
#include "testlib/qmlmessagecollector.h"

#include <QPoint>
#include <QString>

#include <memory>

class QQuickItem;
class QQuickWindow;

// Runs the real interface for a test: main.qml loaded through the real GuiManager on a database
// in the test's temporary home, drawn by the software renderer, on a D-Bus session of its own.
// Items are found by objectName and driven with real mouse and key events on the window.
// Create it inside a test run of NORVEL_TEST_MAIN; there is one per process.
class UiHarness
{
public:
    UiHarness();

    // Prepares the data directory and the database as start-up does, loads the interface and shows
    // the window. Returns false when the window did not appear.
    bool start();

    QQuickWindow* window() const;
    // The first object of that name in the window, its popups and its menus; null if none.
    QObject* object(const QString& objectName) const;
    QQuickItem* item(const QString& objectName) const;
    // A property of an object, read through QML.
    QVariant property(const QString& objectName, const char* name) const;
    QString text(const QString& objectName) const;

    // Waits until the item is visible and enabled, then clicks its centre (or the given point in it).
    bool click(const QString& objectName);
    bool click(QQuickItem* item, const QPoint& position = QPoint(-1, -1));
    void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    // QML warnings and errors so far.
    QStringList qmlMessages() const;

private:
    PrivateSessionBus m_bus;
    // Made when the test run has begun: the test library installs its own handler at that point.
    std::unique_ptr<QmlMessageCollector> m_messages;
};

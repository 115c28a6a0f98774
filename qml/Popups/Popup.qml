import QtQuick 2.15

// Base of every in-window popup: fills its parent and swallows the pointer, so nothing behind it
// reacts and no context menu opens behind it.
Item {
    id: popup

    property bool destroyOnClick: false
    property bool hideOnClick: false
    property bool acceptMouseEvents: true

    signal aboutToBeDestroyed()

    function show() {
        visible = true
    }

    function hide() {
        visible = false
    }

    function destroyPopup() {
        aboutToBeDestroyed()
        destroy()
    }

    function onPressed() {
        if (!destroyOnClick && !hideOnClick)
            return
        if (typeof popup.hideWithAnimation === "function")
            popup.hideWithAnimation()
        else if (destroyOnClick)
            destroyPopup()
        else
            hide()
    }

    anchors.fill: parent
    z: 100
    visible: false

    MouseArea {
        anchors.fill: parent
        enabled: popup.acceptMouseEvents
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onPressed: popup.onPressed()
        onWheel: wheel.accepted = true
    }
}

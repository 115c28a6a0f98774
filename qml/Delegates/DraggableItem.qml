import QtQuick 2.15

// The mouse surface of a row: selection colours, clicks, and the press-and-hold that lifts the row
// for a drag. It sits below the row's own controls, which take their clicks first.
Rectangle {
    id: item

    property bool selected: false
    property bool current: false
    property bool dragEnabled: true
    property bool flicking: false
    readonly property bool hovered: mouseArea.containsMouse
    readonly property alias pressed: mouseArea.pressed
    property bool dragging: false
    property real pressX: 0
    property real pressY: 0

    signal positionChanged(var mouse)
    signal pressAndHold()
    signal released()
    signal clicked(var mouse)
    signal doubleClicked(var mouse)
    signal deleteButtonPressed()
    signal returnButtonPressed()

    color: selected || current ? appStyle.colors.selectedRow : appStyle.colors.listRow

    onFlickingChanged: {
        if (flicking)
            holdTimer.stop()
    }

    Timer {
        id: holdTimer
        interval: 200
        onTriggered: {
            if (!item.flicking)
                item.pressAndHold()
        }
    }

    MouseArea {
        id: mouseArea
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onPressed: {
            item.pressX = mouse.x
            item.pressY = mouse.y
            if (item.dragEnabled && mouse.button === Qt.LeftButton)
                holdTimer.restart()
        }
        onPositionChanged: item.positionChanged(mouse)
        onReleased: {
            holdTimer.stop()
            item.released()
        }
        onClicked: {
            if (!item.dragging)
                item.clicked(mouse)
        }
        onDoubleClicked: {
            holdTimer.stop()
            item.doubleClicked(mouse)
        }
    }

    Keys.onDeletePressed: item.deleteButtonPressed()
    Keys.onReturnPressed: item.returnButtonPressed()
}

import QtQuick 2.15
import QtQuick.Controls 2.15

// A flat icon button of the tool bar.
AbstractButton {
    id: button

    property string iconSource
    property real iconRotation: 0

    implicitWidth: appStyle.components.toolBar.buttonSize
    implicitHeight: appStyle.components.toolBar.buttonSize
    hoverEnabled: true
    opacity: enabled ? 1 : 0.35
    focusPolicy: Qt.NoFocus

    background: Rectangle {
        radius: 6
        color: button.pressed ? appStyle.components.menu.highlightColor
                              : button.hovered ? Qt.darker(appStyle.components.toolBar.backgroundColor, 1.06)
                                               : "transparent"
    }

    contentItem: Item {
        ColoredIcon {
            anchors.centerIn: parent
            width: appStyle.components.toolBar.iconSize
            height: width
            iconSource: button.iconSource
            rotation: button.iconRotation
            scale: button.pressed ? 0.92 : 1
        }
    }

    ToolTip.visible: hovered && ToolTip.text !== ""
    ToolTip.delay: 600
}

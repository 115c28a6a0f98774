import QtQuick 2.15
import QtQuick.Controls 2.15
import "../Components"

// A flat button in the theme's colours; highlighted and checked buttons take the application colour.
Button {
    id: button

    readonly property bool filled: highlighted || checked

    padding: 8
    leftPadding: 14
    rightPadding: 14

    contentItem: StyledLabel {
        text: button.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        color: button.filled ? "white" : appStyle.colors.taskName
        opacity: button.enabled ? 1 : 0.5
    }

    background: Rectangle {
        implicitHeight: 32
        radius: 6
        color: button.filled ? appStyle.applicationColor
                             : button.down ? appStyle.colors.selectedRow : appStyle.colors.messageButton
    }
}

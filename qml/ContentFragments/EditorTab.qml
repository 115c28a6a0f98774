import QtQuick 2.15
import QtQuick.Controls 2.15
import "../Components"

// A tab of the editor: the current one is underlined in the application colour.
TabButton {
    id: tab

    contentItem: StyledLabel {
        text: tab.text
        horizontalAlignment: Text.AlignHCenter
        color: tab.checked ? appStyle.applicationColor : appStyle.colors.taskName
        font.bold: tab.checked
    }

    background: Rectangle {
        implicitHeight: 36
        color: "transparent"

        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: tab.checked ? 2 : 1
            color: tab.checked ? appStyle.applicationColor : appStyle.components.toolBar.borderColor
        }
    }
}

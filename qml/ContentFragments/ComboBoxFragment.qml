import QtQuick 2.15
import "../Components"

// A titled row showing the current choice; a click asks for another one.
Item {
    id: fragment

    property string title
    property string text
    // Rows of one form line up their boxes.
    property int titleWidth: 80

    signal clicked()

    implicitHeight: 36
    implicitWidth: 400

    StyledLabel {
        id: titleLabel
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        width: fragment.titleWidth
        text: fragment.title
        elide: Text.ElideRight
    }

    Rectangle {
        id: box
        anchors.left: titleLabel.right
        anchors.leftMargin: 8
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        height: 30
        radius: 6
        color: boxArea.containsMouse ? appStyle.colors.selectedRow : appStyle.colors.messageButton

        StyledLabel {
            objectName: fragment.objectName + "Text"
            anchors.left: parent.left
            anchors.leftMargin: 10
            anchors.right: arrow.left
            anchors.rightMargin: 6
            anchors.verticalCenter: parent.verticalCenter
            text: fragment.text
            color: appStyle.colors.taskName
            elide: Text.ElideMiddle
        }

        StyledLabel {
            id: arrow
            anchors.right: parent.right
            anchors.rightMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            text: "\u203A"
            rotation: 90
            font.pixelSize: 18
            color: appStyle.colors.lightGray
        }

        MouseArea {
            id: boxArea
            anchors.fill: parent
            hoverEnabled: true
            cursorShape: Qt.PointingHandCursor
            onClicked: fragment.clicked()
        }
    }
}

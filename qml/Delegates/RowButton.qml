import QtQuick 2.15
import "../Components"

// A small glyph button at the right end of a row.
Rectangle {
    id: button

    property string glyph
    property bool highlighted: false

    signal clicked()

    width: 26
    height: 26
    radius: 13
    color: mouseArea.containsMouse ? appStyle.colors.selectedRow : "transparent"

    StyledLabel {
        anchors.centerIn: parent
        text: button.glyph
        font.pixelSize: 16
        color: button.highlighted ? Settings.applicationColor : appStyle.colors.lightGray
    }

    MouseArea {
        id: mouseArea
        anchors.fill: parent
        hoverEnabled: true
        onClicked: button.clicked()
    }
}

import QtQuick 2.15
import "../Components"

// A preview row: a bold title over its text; rows that open an editor say where they were clicked.
Item {
    id: section

    property string title
    property string text

    signal clicked(var item, real x, real y)

    width: parent.width
    implicitHeight: column.implicitHeight

    Column {
        id: column
        width: parent.width
        spacing: 2

        StyledLabel {
            width: parent.width
            text: section.title
            font.bold: true
            wrapMode: Text.Wrap
        }

        StyledLabel {
            width: parent.width
            text: section.text
            color: appStyle.colors.taskDate
            wrapMode: Text.Wrap
            visible: text !== ""
        }
    }

    MouseArea {
        anchors.fill: parent
        onClicked: section.clicked(section, mouse.x, mouse.y)
    }
}

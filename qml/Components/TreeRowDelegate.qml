import QtQuick 2.15

// One row of a project or context tree: indented by level, with an arrow that opens and closes the
// row's children.
Rectangle {
    id: row

    property var object
    property bool hasChildren
    property bool opened
    property bool selected
    property string iconSource
    // Kinds of dragged rows the row may take; the page decides on each one as it enters.
    property var dropKeys: []

    signal clicked()
    signal toggled()
    signal menuRequested()
    signal dragEntered(var drag)
    signal dropped(var drop)

    objectName: "treeRow_" + (object ? object.NAME : "")
    height: appStyle.pages.treeRowHeight
    color: selected ? appStyle.colors.treeSelection
                    : rowArea.containsMouse ? appStyle.colors.selectedRow : "transparent"
    border.width: dropArea.containsDrag ? 2 : 0
    border.color: Settings.applicationColor

    DropArea {
        id: dropArea
        objectName: "treeRowDropArea"
        anchors.fill: parent
        keys: row.dropKeys
        onEntered: row.dragEntered(drag)
        onDropped: row.dropped(drop)
    }

    MouseArea {
        id: rowArea
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onClicked: mouse.button === Qt.RightButton ? row.menuRequested() : row.clicked()
    }

    Item {
        id: arrow
        objectName: "treeRowArrow_" + (row.object ? row.object.NAME : "")
        x: 6 + (row.object && row.object.LEVEL ? row.object.LEVEL * 16 : 0)
        width: 18
        height: parent.height
        visible: row.hasChildren

        StyledLabel {
            anchors.centerIn: parent
            text: "\u203A"
            font.pixelSize: 18
            color: appStyle.colors.lightGray
            rotation: row.opened ? 90 : 0
        }

        MouseArea {
            anchors.fill: parent
            onClicked: row.toggled()
        }
    }

    ColoredIcon {
        id: icon
        anchors.left: arrow.right
        anchors.leftMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        width: 18
        height: 18
        iconSource: row.iconSource
    }

    StyledLabel {
        anchors.left: icon.right
        anchors.leftMargin: 8
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: row.object ? Helper.objectDisplayName(row.object) : ""
        color: appStyle.colors.taskName
        font.bold: row.object !== undefined && row.object.FOLDER == true
        elide: Text.ElideRight
    }
}

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQml 2.15

// The band at the top of a list: its title and, on the right, the list's own menu.
Rectangle {
    id: header

    property string title
    property var menuItems: []

    height: 44
    color: appStyle.pages.listHeaderBackground

    StyledLabel {
        objectName: "listHeaderTitle"
        anchors.left: parent.left
        anchors.leftMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        text: header.title
        color: appStyle.pages.listHeaderText
        font.pixelSize: 17
        font.bold: true
    }

    StyledLabel {
        objectName: "listMenuButton"
        visible: header.menuItems.length > 0
        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        text: "\u2026"
        color: appStyle.pages.listHeaderText
        font.pixelSize: 20

        MouseArea {
            anchors.fill: parent
            anchors.margins: -6
            onClicked: listMenu.popup()
        }
    }

    NvMenu {
        id: listMenu
    }

    Instantiator {
        model: header.menuItems
        delegate: NvMenuItem {
            label: modelData.text
            // modelData is a copy that has lost its functions; the handler is read from the list itself.
            onActivated: header.menuItems[index].handler()
        }
        onObjectAdded: listMenu.insertItem(index, object)
        onObjectRemoved: listMenu.removeItem(object)
    }
}

import QtQuick 2.15
import "../Components"

// The band above the first row of a section. Its text and its action come from the page's
// section table; a value the table does not name shows the page's main section name.
Rectangle {
    id: header

    property Item listPage
    property string section
    readonly property var info: listPage.sectionInfoHash[section] || ({})
    readonly property bool collapsed: listPage.collapsedSections[section] === true

    objectName: "sectionHeader_" + section
    color: appStyle.pages.sectionHeaderBackground

    StyledLabel {
        objectName: "sectionTitle_" + header.section
        anchors.left: parent.left
        anchors.leftMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        text: header.info.text !== undefined ? header.info.text : header.listPage.mainSectionName
        color: appStyle.pages.sectionHeaderText
        font.pixelSize: 12
        font.bold: true
    }

    StyledLabel {
        visible: header.info.hasIcon === true
        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        text: "\u25BE"
        rotation: header.collapsed ? -90 : 0
        color: appStyle.pages.sectionHeaderText
        font.pixelSize: 14
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onClicked: {
            if (mouse.button === Qt.RightButton) {
                header.listPage.openEmptySpaceMenu()
                return
            }
            if (typeof header.info.func === "function")
                header.info.func()
        }
    }
}

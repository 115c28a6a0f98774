import QtQuick 2.15

// Every text of the interface: one rendering, links in the accent colour that open outside.
Text {
    id: label

    property var linkHandler: function (link) {
        Qt.openUrlExternally(link)
    }

    renderType: USE_NATIVE_TEXT_RENDERING ? Text.NativeRendering : Text.QtRendering
    linkColor: Settings.applicationColor
    color: appStyle.colors.messageText
    font.pixelSize: 13
    onLinkActivated: linkHandler(link)

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.NoButton
        cursorShape: label.hoveredLink ? Qt.PointingHandCursor : Qt.ArrowCursor
    }
}

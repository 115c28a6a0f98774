import QtQuick 2.15

// What a page will show, until the page itself is built.
Rectangle {
    id: placeholder

    property string iconSource
    property string title
    property string text

    color: appStyle.mainWindow.backgroundColor

    Column {
        anchors.centerIn: parent
        width: Math.min(placeholder.width - 80, 460)
        spacing: 14

        ColoredIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 56
            height: 56
            iconSource: placeholder.iconSource
        }

        StyledLabel {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: placeholder.title
            color: appStyle.colors.taskName
            font.pixelSize: 22
        }

        StyledLabel {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: placeholder.text
            color: appStyle.pages.placeholderText
            font.pixelSize: 14
            lineHeight: 1.2
        }
    }
}

import QtQuick 2.15
import QtQuick.Controls 2.15

// What an empty list shows: a picture, what the list is for, and how to fill it. "Learn more"
// opens the method article and stays hidden while the articles are not part of the program.
Rectangle {
    id: placeholder

    property string imageName
    property string mainText
    property string extraText
    property string articleId
    property bool articlesAvailable: false

    signal learnMoreClicked(string articleId)

    color: appStyle.mainWindow.backgroundColor

    Column {
        anchors.centerIn: parent
        width: Math.min(placeholder.width - 80, 460)
        spacing: 14

        ColoredIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 64
            height: 64
            iconSource: placeholder.imageName !== "" ? placeholder.imageName + ".svg" : ""
        }

        StyledLabel {
            objectName: "placeholderMainText"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: placeholder.mainText
            color: appStyle.colors.taskName
            font.pixelSize: 16
            lineHeight: 1.2
        }

        Button {
            objectName: "learnMoreButton"
            anchors.horizontalCenter: parent.horizontalCenter
            visible: placeholder.articlesAvailable && placeholder.articleId !== ""
            text: qsTr("Learn more")
            onClicked: placeholder.learnMoreClicked(placeholder.articleId)
        }

        StyledLabel {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: placeholder.extraText
            color: appStyle.pages.placeholderText
            font.pixelSize: 13
        }
    }
}

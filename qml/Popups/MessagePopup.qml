import QtQuick 2.15
import QtQuick.Controls 2.15
import "../Components"

// A message with a title and one button.
Popup {
    id: popup

    property string title
    property string text

    signal accepted()

    function handleEnterButton() {
        accepted()
        close()
    }

    objectName: "messagePopup"
    modal: true
    focus: true
    width: appStyle.popups.messageWidth
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 3)
    padding: 20
    closePolicy: Popup.CloseOnEscape

    background: Rectangle {
        radius: 8
        color: appStyle.popups.backgroundColor
        border.color: appStyle.components.toolBar.borderColor
    }

    Overlay.modal: Rectangle {
        color: appStyle.popups.overlayColor
    }

    contentItem: Column {
        spacing: 14

        StyledLabel {
            width: parent.width
            text: popup.title
            font.pixelSize: 15
            font.bold: true
            wrapMode: Text.Wrap
        }

        StyledLabel {
            width: parent.width
            text: popup.text
            wrapMode: Text.Wrap
        }

        Button {
            objectName: "messageOkButton"
            anchors.right: parent.right
            text: qsTr("OK")
            onClicked: popup.handleEnterButton()
        }
    }
}

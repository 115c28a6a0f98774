import QtQuick 2.15
import QtQuick.Controls 2.15

// Asks for the name of a new or renamed folder, project or context; an empty name is refused.
Popup {
    id: popup

    property string title
    property string name
    property string emptyNameText
    property bool nameRefused: false

    signal saved(string name)

    function save() {
        var trimmed = nameField.text.trim()
        nameRefused = trimmed === ""
        if (nameRefused)
            return
        saved(trimmed)
        close()
    }

    objectName: "objectNamePopup"
    parent: Overlay.overlay
    modal: true
    focus: true
    width: appStyle.popups.messageWidth
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 3)
    padding: 20
    closePolicy: Popup.CloseOnEscape
    onOpened: nameField.forceActiveFocus()

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
        }

        TextField {
            id: nameField
            objectName: "nameField"
            width: parent.width
            text: popup.name
            selectByMouse: true
            onAccepted: popup.save()
        }

        StyledLabel {
            objectName: "nameError"
            width: parent.width
            visible: popup.nameRefused
            text: qsTr("Save Error") + ": " + popup.emptyNameText
            color: appStyle.colors.red
            wrapMode: Text.Wrap
        }

        Row {
            anchors.right: parent.right
            spacing: 10

            Button {
                objectName: "nameCancelButton"
                text: qsTr("Cancel")
                onClicked: popup.close()
            }

            Button {
                objectName: "nameSaveButton"
                text: qsTr("Save")
                onClicked: popup.save()
            }
        }
    }
}

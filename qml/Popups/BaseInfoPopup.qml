import QtQuick 2.15
import QtQuick.Controls 2.15
import "../Components"

// The editor frame: a header with Save and Cancel over the content; save updates or creates.
AnimatedPopup {
    id: popup

    property var objectToEdit
    property var createObjectFunc
    property var updateObjectFunc
    property string titleText
    property alias content: contentHolder.children

    signal saveClicked()

    function saveObjectFunc(object) {
        return objectToEdit ? updateObjectFunc(object) : createObjectFunc(object)
    }

    popupWidth: 600
    popupHeight: height - 32

    Keys.onEscapePressed: hideWithAnimation()

    Item {
        id: header
        width: parent.width
        height: 60

        Button {
            objectName: "editorSaveButton"
            anchors.left: parent.left
            anchors.leftMargin: 20
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Save")
            highlighted: true
            onClicked: popup.saveClicked()
        }

        StyledLabel {
            objectName: "editorTitle"
            anchors.centerIn: parent
            text: popup.titleText
            font.pixelSize: 16
            font.bold: true
        }

        Button {
            objectName: "editorCancelButton"
            anchors.right: parent.right
            anchors.rightMargin: 20
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Cancel")
            onClicked: popup.hideWithAnimation()
        }

        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: 1
            color: appStyle.components.toolBar.borderColor
        }
    }

    Item {
        id: contentHolder
        anchors.top: header.bottom
        anchors.topMargin: 12
        anchors.left: parent.left
        anchors.leftMargin: 24
        anchors.right: parent.right
        anchors.rightMargin: 24
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 20
    }
}

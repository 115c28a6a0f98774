import QtQuick 2.15
import QtQuick.Controls 2.15
import "../Components"

// A question or a message with one or two buttons; the focused button is the filled one.
AnimatedPopup {
    id: popup

    property string titleText
    property string messageText
    property string acceptButtonText: qsTr("Yes")
    property bool rejectButtonVisible: true
    property bool checkBoxVisible: false
    property string checkBoxText
    property bool checkBoxChecked: false
    property string checkBoxSettingsParam
    property bool acceptFocused: true
    property bool acceptClicked: false

    signal accepted()

    function handleEnterButton() {
        if (acceptFocused || !rejectButtonVisible)
            accept()
        else
            hideWithAnimation()
    }

    function selectCancelButton() {
        if (rejectButtonVisible)
            acceptFocused = false
    }

    function accept() {
        acceptClicked = true
        accepted()
        hideWithAnimation()
    }

    objectName: "MessagePopup"
    z: 1000
    popupWidth: 360
    popupHeight: content.implicitHeight + 40
    focus: true

    Keys.onPressed: {
        if (event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab || event.key === Qt.Key_Left
                || event.key === Qt.Key_Right) {
            acceptFocused = !rejectButtonVisible || !acceptFocused
        } else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter) {
            handleEnterButton()
        } else if (event.key === Qt.Key_Escape) {
            hideWithAnimation()
        } else {
            return
        }
        event.accepted = true
    }

    // A one-button message closed by Escape still runs what it was shown for, once.
    onAboutToBeDestroyed: {
        if (!rejectButtonVisible && !acceptClicked)
            accepted()
    }

    Column {
        id: content
        parent: popup.card
        x: 20
        y: 20
        width: popup.card.width - 40
        spacing: 14

        StyledLabel {
            objectName: "MessagePopupTitle"
            width: parent.width
            text: popup.titleText
            font.pixelSize: 15
            font.bold: true
            wrapMode: Text.Wrap
        }

        StyledLabel {
            width: parent.width
            text: popup.messageText
            wrapMode: Text.Wrap
        }

        CheckBox {
            visible: popup.checkBoxVisible
            text: popup.checkBoxText
            checked: popup.checkBoxChecked
            onToggled: popup.checkBoxChecked = checked
        }

        Row {
            anchors.right: parent.right
            spacing: 10

            Button {
                objectName: "MessagePopupCancelButton"
                visible: popup.rejectButtonVisible
                text: qsTr("Cancel")
                highlighted: !popup.acceptFocused
                onClicked: popup.hideWithAnimation()
            }

            Button {
                objectName: "MessagePopupAcceptButton"
                text: popup.acceptButtonText
                highlighted: popup.acceptFocused
                onClicked: popup.accept()
            }
        }
    }
}

import QtQuick 2.15

// A card that slides down from above the window and back up before it goes.
Popup {
    id: popup

    property int popupWidth: 400
    property int popupHeight: 370
    property int verticalCenterOffset: 0
    default property alias cardData: card.data
    readonly property alias card: card
    // True once the card has arrived.
    property bool opened: false

    function show() {
        visible = true
        slideIn.start()
    }

    function hideWithAnimation() {
        if (!slideOut.running)
            slideOut.start()
    }

    Rectangle {
        anchors.fill: parent
        color: appStyle.popups.overlayColor
    }

    Rectangle {
        id: card
        readonly property real restingY: (popup.height - height) / 2 + popup.verticalCenterOffset

        x: Math.round((popup.width - width) / 2)
        // A language switch evaluates every binding anew: an arrived card must stay where it is.
        y: popup.opened ? restingY : -height
        width: popup.popupWidth
        height: popup.popupHeight
        radius: 32
        color: appStyle.popups.backgroundColor
        border.color: appStyle.components.toolBar.borderColor

        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
        }
    }

    NumberAnimation {
        id: slideIn
        target: card
        property: "y"
        to: card.restingY
        duration: 500
        easing.type: Easing.OutCubic
        onFinished: popup.opened = true
    }

    SequentialAnimation {
        id: slideOut
        NumberAnimation { target: card; property: "y"; to: -card.height; duration: 250 }
        ScriptAction { script: popup.destroyPopup() }
    }
}

import QtQuick 2.15

// A rounded card that stays inside the window wherever it is asked to appear.
Popup {
    id: popup

    property int popupWidth: 300
    property int popupHeight: 300
    property color bgColor: appStyle.popups.backgroundColor
    property bool useAnchors: false
    default property alias cardData: card.data
    readonly property alias card: card

    function moveTo(x, y) {
        card.x = Math.min(x, width - popupWidth - 10)
        card.y = y < 0 ? 10 : y
    }

    Rectangle {
        id: card
        anchors.centerIn: popup.useAnchors ? parent : undefined
        width: popup.popupWidth
        height: popup.popupHeight
        radius: 24
        color: popup.bgColor
        border.color: appStyle.components.toolBar.borderColor

        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
        }
    }
}

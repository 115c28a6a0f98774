import QtQuick 2.15

// A first-use hint that rows can be dragged: an icon slides in over the first row, bobs twice and
// slides out again.
StyledLabel {
    id: hint

    function runOn(row) {
        parent = row
        anchors.verticalCenter = row.verticalCenter
        animation.restart()
    }

    x: -width
    visible: animation.running
    text: "\u2195"
    font.pixelSize: 20
    color: Settings.applicationColor

    SequentialAnimation {
        id: animation
        NumberAnimation { target: hint; property: "x"; from: -hint.width; to: 12; duration: 800 }
        SequentialAnimation {
            loops: 2
            NumberAnimation { target: hint; property: "anchors.verticalCenterOffset"; to: -5; duration: 400 }
            NumberAnimation { target: hint; property: "anchors.verticalCenterOffset"; to: 0; duration: 400 }
        }
        NumberAnimation { target: hint; property: "x"; to: -hint.width; duration: 400 }
    }
}

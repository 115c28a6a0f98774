import QtQuick 2.15

// The thin line under the pages: when the last sync happened, or that one is running.
Rectangle {
    id: statusBar

    readonly property var lastSync: DataManager.lastSyncDateTime

    function isToday(date) {
        var today = new Date()
        return date.getFullYear() === today.getFullYear() && date.getMonth() === today.getMonth()
                && date.getDate() === today.getDate()
    }

    function syncText() {
        if (DataManager.isSyncActive)
            return qsTr("Sync in progress…")
        if (!lastSync || isNaN(lastSync.getTime()))
            return qsTr("Sync hasn't been performed yet")
        var locale = Qt.locale(Settings.applicationLanguage)
        if (isToday(lastSync))
            return qsTr("Last synced: today %1").arg(lastSync.toLocaleTimeString(locale, Locale.NarrowFormat))
        return qsTr("Last synced: %1").arg(lastSync.toLocaleString(locale, Locale.NarrowFormat))
    }

    // A new offer settles the running one first: its deletion or completion becomes final.
    function showUndoMessage(text, acceptCallback, undoCallback) {
        if (undoTimer.running) {
            undoTimer.stop()
            undoRow.acceptCallback()
        }
        undoLabel.text = text
        undoRow.acceptCallback = acceptCallback
        undoRow.undoCallback = undoCallback
        undoTimer.restart()
    }

    function hideUndoMessage() {
        undoTimer.stop()
        undoRow.acceptCallback()
        undoRow.shown = false
    }

    function undo() {
        if (!undoTimer.running)
            return
        undoTimer.stop()
        undoRow.undoCallback()
        undoRow.shown = false
        GuiManager.endTrackUserActions()
    }

    implicitHeight: appStyle.components.statusBar.height
    color: appStyle.components.statusBar.backgroundColor

    Rectangle {
        width: parent.width
        height: 1
        color: appStyle.components.statusBar.borderColor
    }

    StyledLabel {
        id: syncLabel
        objectName: "syncStatusLabel"
        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: statusBar.syncText()
        color: appStyle.components.statusBar.textColor
        font.pixelSize: appStyle.components.statusBar.fontPixelSize

        MouseArea {
            anchors.fill: parent
            enabled: !DataManager.isUserLoggedIn
            cursorShape: enabled ? Qt.PointingHandCursor : Qt.ArrowCursor
            onClicked: sidePanel.openMethodSyncArticle()
        }
    }

    Row {
        id: undoRow

        property var acceptCallback: function () {}
        property var undoCallback: function () {}
        property bool shown: false

        objectName: "undoRow"
        anchors.centerIn: parent
        spacing: 8
        opacity: shown ? 1 : 0
        visible: opacity > 0

        Behavior on opacity {
            NumberAnimation { duration: 300 }
        }

        StyledLabel {
            id: undoLabel
            objectName: "undoLabel"
            anchors.verticalCenter: parent.verticalCenter
            color: appStyle.components.statusBar.textColor
            font.pixelSize: appStyle.components.statusBar.fontPixelSize
        }

        StyledLabel {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Restore")
            color: appStyle.applicationColor
            font.pixelSize: appStyle.components.statusBar.fontPixelSize
            font.bold: true

            MouseArea {
                objectName: "UndoButton"
                anchors.fill: parent
                cursorShape: Qt.PointingHandCursor
                onClicked: statusBar.undo()
            }
        }
    }

    Timer {
        id: undoTimer
        interval: 9700
        onRunningChanged: if (running) undoRow.shown = true
        // The tracking stays on: the next click anywhere confirms once more, which the services bear.
        onTriggered: {
            undoRow.acceptCallback()
            undoRow.shown = false
        }
    }
}

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
}

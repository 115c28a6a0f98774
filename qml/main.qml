import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import QtQuick.Window 2.15
import com.kelmora.helpers 1.0
import "Components"

ApplicationWindow {
    id: mainWindow

    readonly property bool hasActiveTextEdit: activeFocusItem !== null
                                              && activeFocusItem.toString().indexOf("QQuickTextEdit") !== -1
    // Controls inside the window have a contentItem of their own; they reach the pages' bus here.
    readonly property Item pageContent: contentItem

    signal hideOnClose()

    function titleBarColor() {
        return appStyle.dark ? appStyle.colors.dmMainLightColor : "#EDEDED"
    }

    function startSyncIfPossible() {
        if (DataManager.isUserLoggedIn)
            DataManager.startSyncSilent()
        else if (CalendarManager.authorized)
            FunctionHelper.callIfProvided(CalendarManager, "sync")
    }

    function placeOnScreen() {
        width = Math.max(minimumWidth, Screen.width * appStyle.mainWindow.widthRatio)
        height = Math.max(minimumHeight, Screen.height * appStyle.mainWindow.heightRatio)
        x = Screen.virtualX + (Screen.width - width) / 2
        y = Screen.virtualY + (Screen.height - height) / 2
    }

    function showDatabaseError() {
        GuiManager.showMainWindow()
        popupHelper.showMessageDialog(qsTr("Database Error"),
                                qsTr("Unable to deploy database. Please contact the application's support team for more information. The application will be closed."),
                                Qt.quit)
    }

    function showTaskEditItem(project, task) {
        // The project arrives too, but the task opens in the daily plan on purpose.
        sidePanel.openDailyPlanPage(task, true)
        GuiManager.showMainWindow()
        popupHelper.showTaskPreviewPopup(task)
    }

    function shakeWindow() {
        shakeAnimation.restart()
    }

    objectName: "mainWindow"
    title: "Norvel"
    visible: false
    minimumWidth: appStyle.mainWindow.minimumWidth
    minimumHeight: appStyle.mainWindow.minimumHeight
    color: appStyle.mainWindow.backgroundColor

    menuBar: NvMenuBar {
        id: menuBar
    }

    header: NvToolBar {
        id: toolBar
    }

    footer: NvStatusBar {
        id: statusBar
    }

    AppStyle {
        id: appStyle
    }

    PopupHelper {
        id: popupHelper
    }

    ObjectUpdater {
        id: objectUpdater
    }

    RowLayout {
        anchors.fill: parent
        spacing: 0

        SidePanel {
            id: sidePanel
            objectName: "sidePanel"
            Layout.fillHeight: true
            Layout.preferredWidth: appStyle.components.sidePanel.width
        }

        Item {
            id: contentItem
            objectName: "contentItem"
            Layout.fillWidth: true
            Layout.fillHeight: true

            signal requestSave()
            signal requestUp()
            signal requestSelectUpperItem()
            signal requestDown()
            signal requestSelectLowerItem()
            signal requestSearch()
            signal abortSearch()
            signal copyClicked()
            signal cutClicked()
            signal selectAllClicked()
            signal pasteClicked()

            PageLoader {
                id: pageLoader
                objectName: "pageLoader"
                anchors.fill: parent
            }
        }
    }

    SequentialAnimation {
        id: shakeAnimation

        property real startX

        ScriptAction { script: shakeAnimation.startX = mainWindow.x }
        NumberAnimation { target: mainWindow; property: "x"; to: shakeAnimation.startX - 5; duration: 100 }
        NumberAnimation { target: mainWindow; property: "x"; to: shakeAnimation.startX + 5; duration: 100 }
        NumberAnimation { target: mainWindow; property: "x"; to: shakeAnimation.startX - 5; duration: 100 }
        NumberAnimation { target: mainWindow; property: "x"; to: shakeAnimation.startX + 5; duration: 100 }
        NumberAnimation { target: mainWindow; property: "x"; to: shakeAnimation.startX - 5; duration: 100 }
        NumberAnimation { target: mainWindow; property: "x"; to: shakeAnimation.startX; duration: 100 }
    }

    Component.onCompleted: {
        GuiManager.setTitleBarColor(titleBarColor())
        if (FIRST_LAUNCH)
            FunctionHelper.callIfProvided(AnalyticsManager, "sendEvent", ["SESSION", "FIRST_LAUNCH"])
        FunctionHelper.callIfProvided(AnalyticsManager, "sendEvent", ["SESSION", "START"])
        if (Settings.clientLogin !== "" && Settings.subscribeNews && !Settings.subscribeNewsRequestSent)
            FunctionHelper.callIfProvided(AnalyticsManager, "sendSubscribeNewsRequest")
        placeOnScreen()
        if (!DataManager.isDataPrepared()) {
            showDatabaseError()
            return
        }
        startSyncIfPossible()
        FunctionHelper.callIfProvided(AppUpdater, "check")
        pageLoader.replaceWith(sidePanel.entries[sidePanel.currentIndex].pageName, false)
    }

    onVisibilityChanged: {
        if (visibility === Window.Minimized || visibility === Window.Hidden)
            return
        sidePanel.updateUI()
        startSyncIfPossible()
    }

    onActiveChanged: GuiManager.switchAppThemeIfNeeded()

    onClosing: {
        close.accepted = false
        if (GuiManager.hasTrayIcon() && Settings.showMessageOnClose) {
            popupHelper.showMessageDialog("Norvel",
                                    qsTr("Please note that the app is still running in the background. In order to close it please use the icon in the system tray."),
                                    function () {
                                        Settings.showMessageOnClose = false
                                        mainWindow.hideOnClose()
                                    })
            return
        }
        hideOnClose()
        sidePanel.updateUI()
    }

    Connections {
        target: GuiManager
        function onWindowDidShow() {
            sidePanel.updateUI()
            mainWindow.startSyncIfPossible()
        }
        function onAppThemeChanged() { GuiManager.setTitleBarColor(mainWindow.titleBarColor()) }
        // The user's next click after a delete or completion is taken as assent.
        function onUserPerformedAction() {
            statusBar.hideUndoMessage()
            GuiManager.endTrackUserActions()
        }
    }

    Connections {
        target: TaskHandler
        ignoreUnknownSignals: true
        function onTaskAdded(task) {
            if (task.STATE !== COMPLETED_OBJECT_STATE && CalendarManager.authorized)
                FunctionHelper.callIfProvided(CalendarManager, "sync")
        }
        function onTaskUpdated() {
            if (CalendarManager.authorized)
                FunctionHelper.callIfProvided(CalendarManager, "sync")
        }
    }

    Connections {
        target: DataManager
        function onUserIsAboutToLogout() { pageLoader.clearCache() }
        function onSyncActiveChanged(active) {
            if (active)
                return
            if (CalendarManager.authorized)
                FunctionHelper.callIfProvided(CalendarManager, "sync")
            FunctionHelper.callIfProvided(FavoritesManager, "sync")
        }
        function onSyncNetworkError() {
            popupHelper.showMessageDialog(qsTr("Network error"),
                                    qsTr("The server could not be reached. Make sure the internet connection is working and try again."))
        }
        function onSyncServerError(title, displayMessage) { popupHelper.showMessageDialog(title, displayMessage) }
        function onCheckLoginSuccessful() {
            Settings.cloudSyncEnabled = true
            DataManager.startSync()
        }
        function onUserRegistrationSuccessful() {
            Settings.cloudSyncEnabled = true
            DataManager.startSync()
        }
        function onUserPasswordChangedOutside() {
            sidePanel.openAccountSettings()
            popupHelper.showMessageDialog(qsTr("Sync error"),
                                    qsTr("It seems like you changed your password on another device. Please login to your account with the new password."))
        }
    }

    Connections {
        target: HardwareManager
        function onComputerWokeUp() { sidePanel.updateUI() }
    }
}

import QtQuick 2.15
import com.kelmora.helpers 1.0
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15

// Navigation on the left, adding and sync in the centre, trash and search on the right.
ToolBar {
    id: toolBar

    property bool backEnabled: false
    property bool forwardEnabled: false
    property bool trashVisible: false
    readonly property var page: pageLoader.currentPage
    readonly property bool methodArticleVisible: page ? page.isMethodArticleVisible === true : false
    readonly property bool syncing: DataManager.isSyncActive || DataManager.isAccountOperationActive

    function bindNavigationButtons() {
        if (methodArticleVisible) {
            backEnabled = page.articleCanGoBack === true
            forwardEnabled = page.articleCanGoForward === true
        } else if (page && page.backStackDepth !== undefined) {
            backEnabled = page.backStackDepth > 1
            forwardEnabled = page.forwardStackDepth > 0
        } else if (page && page.canGoBack !== undefined) {
            backEnabled = page.canGoBack
            forwardEnabled = page.canGoForward
        } else {
            backEnabled = false
            forwardEnabled = false
        }
    }

    function anythingDeleted() {
        return DataManager.hasDeletedTasks() || DataManager.hasDeletedFolders()
                || DataManager.hasDeletedProjects() || DataManager.hasDeletedContexts()
    }

    function updateTrashButton(updatedObject) {
        var deletedObject = updatedObject !== undefined && updatedObject !== null
                && (updatedObject.STATE & DELETED_OBJECT_STATE) !== 0
        trashVisible = pageLoader.isActive("TrashPage") || deletedObject || anythingDeleted()
    }

    function startSync() {
        if (!DataManager.isUserLoggedIn) {
            sidePanel.openAccountSettings()
            return
        }
        if (!Settings.cloudSyncEnabled)
            sidePanel.openSyncSettings()
        FunctionHelper.callIfProvided(AnalyticsManager, "sendEvent", ["BAR_SYNC", "PUSH"])
        DataManager.startSync()
    }

    function openTrash() {
        sidePanel.currentIndex = -1
        pageLoader.replaceWith("TrashPage", false)
        updateTrashButton()
    }

    implicitHeight: appStyle.components.toolBar.height
    background: Rectangle {
        color: appStyle.components.toolBar.backgroundColor

        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: 1
            color: appStyle.components.toolBar.borderColor
        }
    }

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 10
        anchors.rightMargin: 10
        spacing: 4

        ToolBarButton {
            objectName: "backButton"
            iconSource: "back.svg"
            visible: toolBar.page ? toolBar.page.showNavigationButtons === true : false
            enabled: toolBar.backEnabled
            ToolTip.text: qsTr("Back")
            onClicked: toolBar.page.handleBackAction()
        }

        ToolBarButton {
            objectName: "forwardButton"
            iconSource: "forward.svg"
            visible: toolBar.page ? toolBar.page.showNavigationButtons === true : false
            enabled: toolBar.forwardEnabled
            ToolTip.text: qsTr("Forward")
            onClicked: toolBar.page.handleForwardAction()
        }

        ToolBarButton {
            objectName: "hideNavigationButton"
            iconSource: "navigation.svg"
            visible: toolBar.page ? toolBar.page.navigationElement !== undefined && !toolBar.methodArticleVisible
                                  : false
            ToolTip.text: qsTr("Show or hide the navigation panel")
            onClicked: toolBar.page.handleHideNavigationAction()
        }

        Item {
            Layout.fillWidth: true
        }

        ToolBarButton {
            objectName: "addButton"
            iconSource: "add.svg"
            enabled: !!toolBar.page && !toolBar.methodArticleVisible
            ToolTip.text: qsTr("Add")
            // Until the list pages choose their own kind of new object, a new task goes to the inbox.
            onClicked: {
                if (toolBar.page.isEditActive !== true && !popupHelper.isPopupVisible)
                    popupHelper.showNorvelBoxTaskPopup()
            }
        }

        ToolBarButton {
            objectName: "syncButton"
            iconSource: "sync.svg"
            ToolTip.text: qsTr("Sync")
            onClicked: toolBar.startSync()

            RotationAnimator on iconRotation {
                running: toolBar.syncing
                from: 0
                to: 360
                duration: 1000
                loops: Animation.Infinite
            }
        }

        Item {
            Layout.fillWidth: true
        }

        ToolBarButton {
            objectName: "trashButton"
            iconSource: "trash.svg"
            opacity: toolBar.trashVisible ? 1 : 0
            visible: opacity > 0
            ToolTip.text: qsTr("Trash")
            onClicked: toolBar.openTrash()

            Behavior on opacity {
                NumberAnimation { duration: appStyle.durations.fade }
            }
        }

        SearchField {
            id: searchField
            objectName: "searchField"
        }
    }

    Connections {
        target: pageLoader
        function onCurrentPageChanged() {
            toolBar.bindNavigationButtons()
            toolBar.updateTrashButton()
        }
    }

    Connections {
        target: toolBar.page
        ignoreUnknownSignals: true
        function onBackStackDepthChanged() { toolBar.bindNavigationButtons() }
        function onForwardStackDepthChanged() { toolBar.bindNavigationButtons() }
        function onIsMethodArticleVisibleChanged() { toolBar.bindNavigationButtons() }
    }

    Connections {
        target: TaskHandler
        ignoreUnknownSignals: true
        function onTaskUpdated(task) { toolBar.updateTrashButton(task) }
    }

    Connections {
        target: ProjectHandler
        ignoreUnknownSignals: true
        function onProjectUpdated(project) { toolBar.updateTrashButton(project) }
    }

    Connections {
        target: ContextHandler
        ignoreUnknownSignals: true
        function onContextUpdated(context) { toolBar.updateTrashButton(context) }
    }

    Connections {
        target: DataManager
        function onSyncActiveChanged(active) {
            if (!active)
                toolBar.updateTrashButton()
        }
        function onUserLoggedInChanged() { toolBar.updateTrashButton() }
    }

    Connections {
        target: Settings
        function onTrashCleanupTimestampChanged() { toolBar.updateTrashButton() }
    }

    Component.onCompleted: updateTrashButton()
}

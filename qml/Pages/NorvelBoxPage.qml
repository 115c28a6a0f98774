import QtQuick 2.15
import QtQuick.Controls 2.15
import com.kelmora.common 1.0
import com.kelmora.helpers 1.0
import "../Components"
import "ObjectClipboard.js" as ObjectClipboard

// The inbox: whatever comes to mind is typed into the field above the list and stays here until it
// is sorted into a project.
HistoryPage {
    id: page

    readonly property var currentListPage: listPage
    readonly property bool isMethodArticleVisible: listPage.isMethodArticleVisible
    readonly property string norvelBoxId: PredefinedDataHelper.norvelBoxId

    function sendEvent(category, action) {
        FunctionHelper.callIfProvided(AnalyticsManager, "sendEvent", [category, action])
    }

    function captureTask(text) {
        var name = text.trim()
        if (name === "")
            return false
        return TaskHandler.createTask({ "NAME": name, "PARENT": norvelBoxId, "STATE": DEFAULT_OBJECT_STATE })
    }

    function selectTask(task, onlySelect) {
        var index = listPage.model.getIndexByObjectId(task.ID)
        FunctionHelper.callAfterProcessEventQueue(function () {
            listPage.setCurrentIndex(index)
            if (!onlySelect && index !== -1)
                FunctionHelper.callIfProvided(popupHelper, "showEditTaskPopup", [task])
        })
    }

    function handleBackAction() {
        var item = popFromBackHistoryStack()
        if (typeof item !== "string")
            return
        if (item === "favpage")
            sidePanel.openFavoritesPage()
        else if (item.indexOf("prjpage") === 0)
            sidePanel.loadPage("ProjectsPage")
        else if (item.indexOf("ctxpage") === 0)
            sidePanel.loadPage("ContextsPage")
        else if (item.indexOf("dppage") === 0)
            openDailyPlanFromHistory(item)
    }

    function openDailyPlanFromHistory(item) {
        var parts = item.split("_")
        var date = Date.fromLocaleString(Qt.locale("en_US"), parts[0].replace("dppage", ""), "dd.MM.yyyy")
        var task = TaskHandler.getTaskById(parts[1] || "")
        sidePanel.openDailyPlanPage(task, true, date)
    }

    function pasteTask() {
        ObjectClipboard.pasteTaskWith({ "PARENT": norvelBoxId }, qsTr("One can paste only tasks into this list."))
    }

    objectName: "NorvelBoxPage"
    sectionHeader: qsTr("Norvel Box")

    Component.onCompleted: {
        pushToHistoryStack(null)
        sendEvent("NB_START", "OPEN_SCREEN")
    }

    TaskListPage {
        id: listPage
        objectName: "norvelBoxList"
        anchors.fill: parent
        parentObjectId: page.norvelBoxId
        model: TaskHandler.getProjectTasks(page.norvelBoxId)
        noActiveObjectsText: qsTr("Press + to add a task")
        placeholderMainText: qsTr("Norvel Box is a special inbox for incoming tasks, quick notes and spontaneous ideas that appear during the day")
        placeholderExtraText: qsTr("Press + to add a task into Norvel Box")
        placeholderArticleId: "norvelbox"
        placeholderImageName: "norvel_box"
        showProjectNamesChain: false
        headerComponent: captureHeader
        onPasteActionClicked: page.pasteTask()
        onAddTaskActionClicked: popupHelper.showNorvelBoxTaskPopup()
    }

    Component {
        id: captureHeader

        Column {
            width: listPage.width

            ListHeader {
                width: parent.width
                title: qsTr("Norvel Box")
                menuItems: [
                    { "text": qsTr("Sort"), "handler": function () {
                        var popup = FunctionHelper.callIfProvided(popupHelper, "showSortingPopup",
                                                                  ["norvelbox", SortingEnums.ListTypeProject])
                        if (!popup)
                            return
                        popup.manualModeRequested.connect(listPage.showManualSortingAnimation)
                        popup.sortingTypeChanged.connect(listPage.model.sort)
                    } }
                ]
            }

            TextField {
                id: captureField
                objectName: "captureField"
                x: 16
                width: parent.width - 32
                height: 40
                font.pixelSize: 14
                selectByMouse: true
                maximumLength: 500
                placeholderText: qsTr("Capture a task and press Return")
                color: appStyle.colors.taskName
                background: Rectangle {
                    color: "transparent"
                    Rectangle {
                        anchors.bottom: parent.bottom
                        width: parent.width
                        height: 1
                        color: captureField.activeFocus ? Settings.applicationColor : appStyle.pages.splitterColor
                    }
                }
                // Handled here rather than in onAccepted: a text field lets Return travel on, and the
                // list around it would open its current row.
                Keys.onReturnPressed: captureText()
                Keys.onEnterPressed: captureText()

                function captureText() {
                    if (page.captureTask(text))
                        clear()
                }
            }

            Item {
                width: parent.width
                height: 8
            }
        }
    }

    Connections {
        target: TaskHandler
        function onTaskAdded(task) {
            if (task.PARENT === page.norvelBoxId)
                listPage.model.update()
        }
        function onTaskUpdated() { listPage.model.update() }
    }

    Connections {
        target: DataManager
        ignoreUnknownSignals: true
        function onSyncActiveChanged(active) {
            if (!active)
                listPage.model.update()
        }
        function onRemindersSyncComplete() { listPage.model.update() }
        function onSortingSyncComplete() { listPage.model.sort() }
    }
}

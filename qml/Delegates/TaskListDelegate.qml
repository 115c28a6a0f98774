import QtQuick 2.15
import QtQuick.Controls 2.15
import com.kelmora.helpers 1.0
import "../Components"

// One task in a list: the completion box, the name, dates, project and context, the memo, and the
// buttons that show on hover. In the trash the row offers a restore instead.
DraggableDelegate {
    id: row

    readonly property var task: itemObject || ({})
    readonly property string taskName: task.NAME !== undefined ? task.NAME : ""
    readonly property string memo: task.MEMO !== undefined && task.MEMO !== null ? task.MEMO : ""
    readonly property bool completed: task.STATE === COMPLETED_OBJECT_STATE
    readonly property bool isRepeatedTask: task.REPEATED !== undefined
    // On the daily plan: started, and not due on the plan's day.
    readonly property bool alsoAvailable: listDelegate !== null && listDelegate.dailyPlanGroup === 2
    readonly property bool trashMode: listPage ? listPage.trashMode === true : false
    readonly property bool showButtons: (hovered || isSelected || isCurrent) && !trashMode && !completed
    property bool memoOpen: false
    property bool memoEditing: false
    property bool nameEditing: false
    property bool ticked: completed
    property bool favorite: false
    // Name and memo as rich text; the search page highlights what was searched.
    property var textDecorator: function (text) { return UrlHelper.convertToHtmlUrls(text) }

    signal completeCheckBoxClicked()
    signal aboutToBeEdited(bool onlyDatesModified)

    dragKey: "task"
    analyticsCategory: "NB_TASK"
    contextMenu: taskMenu
    dragEnabled: listPage ? listPage.dragEnabled && task.STATE === DEFAULT_OBJECT_STATE && !trashMode : false
    objectName: "task_" + taskName
    height: Math.max(56, column.implicitHeight + 18)

    // Dates are wall-clock times stored as UTC; shown as such.
    function wallClockDate(value) {
        if (value === undefined || value === null || value === "")
            return null
        var date = new Date(value)
        if (isNaN(date.getTime()))
            return null
        return new Date(date.getUTCFullYear(), date.getUTCMonth(), date.getUTCDate(),
                        date.getUTCHours(), date.getUTCMinutes())
    }

    function formatDate(value) {
        var date = wallClockDate(value)
        if (!date)
            return ""
        var text = DateFormatHelper.formatDate(date, true, Locale.ShortFormat)
        if (date.getHours() !== 0 || date.getMinutes() !== 0)
            text += " " + DateFormatHelper.formatTimeToLocal(date)
        return text
    }

    function dueColor() {
        var due = wallClockDate(task.DUE)
        if (!due || completed)
            return appStyle.colors.taskDate
        var today = new Date()
        today.setHours(0, 0, 0, 0)
        var dueDay = new Date(due.getFullYear(), due.getMonth(), due.getDate())
        if (dueDay < today)
            return appStyle.colors.red
        return dueDay.getTime() === today.getTime() ? appStyle.colors.green : appStyle.colors.taskDate
    }

    function chainText(chain) {
        return chain && chain.length > 0 ? chain.join(" / ") : ""
    }

    function daysLeft() {
        var deletedAt = Number(task.TIMESTAMP) * 1000
        var wholeDays = Math.floor((Date.now() - deletedAt) / 86400000)
        return Math.max(0, 14 - wholeDays)
    }

    // A shallow copy: dates stay dates, which a round trip through JSON would turn into text.
    function copyOfTask() {
        var copy = {}
        for (var key in task)
            copy[key] = task[key]
        return copy
    }

    function save(changed, onlyDatesModified) {
        aboutToBeEdited(onlyDatesModified)
        objectUpdater.updateTask(changed)
    }

    function toggleCompletion() {
        ticked = !completed
        memoOpen = false
        FunctionHelper.delayFunctionCall(100, function () { row.completeCheckBoxClicked() })
    }

    function applyCompletion() {
        var changed = copyOfTask()
        if (completed) {
            sendEvent("UNDO_COMPLETE")
            changed.STATE = DEFAULT_OBJECT_STATE
            objectUpdater.updateTask(changed)
            return
        }
        if (!changed.PERIOD) {
            if (!changed.START)
                changed.START = undefined
            if (!changed.DUE)
                changed.DUE = undefined
        }
        sendEvent("COMPLETE")
        if (isCurrent)
            listPage.clearItemsSelection()
        objectUpdater.completeTask(changed)
    }

    function saveName(text) {
        nameEditing = false
        var name = text.trim()
        if (name === "" || name === taskName)
            return
        var changed = copyOfTask()
        changed.NAME = name
        if (isRepeatedTask)
            listPage.addTransitionEnabled = false
        save(changed, false)
        listPage.addTransitionEnabled = true
    }

    function saveMemo(text) {
        memoEditing = false
        var trimmed = text.trim()
        if (trimmed === memo)
            return
        sendEvent("EDIT_MEMO")
        var changed = copyOfTask()
        changed.MEMO = trimmed
        memoOpen = trimmed !== ""
        save(changed, false)
    }

    function switchDescription() {
        if (memo === "") {
            memoEditing = true
            return
        }
        memoOpen = !memoOpen
        FunctionHelper.delayFunctionCall(memoOpen ? 300 : 100, function () {
            listPage.listView.positionViewAtIndex(row.delegateIndex, ListView.Contain)
        })
    }

    function showProperties() {
        FunctionHelper.callIfProvided(popupHelper, "showEditTaskPopup", [task])
    }

    function refreshFavorite() {
        favorite = task.ID !== undefined && TaskHandler.inFavorites(task)
    }

    function toggleFavorite() {
        if (favorite)
            TaskHandler.removeFromFavorites(task)
        else
            TaskHandler.addToFavorites(task)
        refreshFavorite()
    }

    function copy() {
        if (!isRepeatedTask)
            Clipboard.object = task
    }

    function cut() {
        if (isRepeatedTask)
            return
        Clipboard.setCutObject(task)
        TaskHandler.markTaskAsDeleted(task)
        TaskHandler.confirmTaskUpdate(task)
    }

    function changeParent(parentId) {
        var changed = copyOfTask()
        changed.PARENT = parentId
        save(changed, false)
    }

    function changeContext(contextId) {
        var changed = copyOfTask()
        changed.CONTEXT = contextId
        save(changed, false)
    }

    function goToProject() {
        var project = DataManager.getProjectById(task.PARENT)
        if (project && project.ID !== undefined)
            sidePanel.openProjectPage(project, task)
    }

    function goToContext() {
        var context = DataManager.getContextById(task.CONTEXT)
        if (context && context.ID !== undefined)
            sidePanel.openContextPage(context, task)
    }

    // An also-available row is not reordered among the day's own rows: dropped there, it becomes
    // due on that day instead.
    function handleDragEntered(source) {
        return source.completed === completed && source.dragKey === dragKey
    }

    function handleDrop(source, dropInside) {
        if (source.alsoAvailable && !alsoAvailable) {
            if (listPage.dayDate)
                source.changeDueDate(listPage.dayDate)
            listPage.dragActive = false
            return true
        }
        var moved = __handleDrop(source, dropInside)
        if (moved && listPage.listView.currentIndex !== -1) {
            var target = delegateIndex
            FunctionHelper.delayFunctionCall(20, function () { listPage.setCurrentIndex(target) })
        }
        return moved
    }

    function wallClock(date, hours, minutes) {
        return new Date(Date.UTC(date.getFullYear(), date.getMonth(), date.getDate(), hours, minutes))
    }

    // The due date moves to the day at its old time; a start at or after it, or of a repeating
    // task, follows (a monthly rule keeps the start's own day of the month).
    function changeDueDate(newDate) {
        var changed = isRepeatedTask ? TaskHandler.getTaskById(task.ID) : copyOfTask()
        var defaultTime = Settings.defaultDueTime.split(":")
        var oldDue = changed.DUE ? new Date(changed.DUE) : null
        var hours = oldDue ? oldDue.getUTCHours() : Number(defaultTime[0])
        var minutes = oldDue ? oldDue.getUTCMinutes() : Number(defaultTime[1])
        var due = wallClock(newDate, hours, minutes)
        changed.DUE = due
        var start = changed.START ? new Date(changed.START) : null
        if (start && (start >= due || changed.PERIOD)) {
            var monthly = changed.PERIOD && changed.PERIOD.charAt(0) === "m"
            var startDay = monthly && oldDue && oldDue.getUTCDate() === newDate.getDate()
                    ? new Date(newDate.getFullYear(), newDate.getMonth(), start.getUTCDate(), 12) : newDate
            changed.START = wallClock(startDay, start.getUTCHours(), start.getUTCMinutes())
        }
        FunctionHelper.callIfProvided(AnalyticsManager, "sendEvent", ["DP_TASK", "MOVED_TASK_DAY"])
        listPage.addTransitionEnabled = false
        objectUpdater.updateTask(changed)
        listPage.addTransitionEnabled = true
    }

    function handleDoubleClick(mouse) {
        FunctionHelper.callIfProvided(popupHelper, "showTaskPreviewPopup", [task])
        listPage.objectDoubleClicked(task)
    }

    onCompleteCheckBoxClicked: applyCompletion()
    onTaskChanged: {
        ticked = completed
        refreshFavorite()
    }
    Component.onCompleted: refreshFavorite()

    Connections {
        target: row.listPage
        function onEmptySpaceClicked() {
            if (row.memoEditing)
                row.saveMemo(memoEditor.item.text)
        }
    }

    Rectangle {
        id: checkBox
        objectName: "completeBox_" + row.taskName
        x: 16
        y: column.y + (nameLabel.height - height) / 2
        width: 20
        height: 20
        radius: 4
        border.width: 1.5
        border.color: row.ticked ? Settings.applicationColor : appStyle.colors.lightGray
        color: row.ticked ? Settings.applicationColor : "transparent"
        visible: !row.trashMode

        StyledLabel {
            anchors.centerIn: parent
            visible: row.ticked
            text: "\u2713"
            color: "white"
            font.pixelSize: 14
            font.bold: true
        }

        MouseArea {
            anchors.fill: parent
            anchors.margins: -6
            onClicked: row.toggleCompletion()
        }
    }

    Column {
        id: column
        anchors.left: parent.left
        anchors.leftMargin: row.trashMode ? 16 : 48
        anchors.right: buttons.left
        anchors.rightMargin: 8
        y: 9
        spacing: 4

        StyledLabel {
            id: nameLabel
            objectName: "taskNameLabel"
            width: parent.width
            visible: !row.nameEditing
            text: row.textDecorator(row.taskName)
            textFormat: Text.RichText
            wrapMode: Text.Wrap
            font.pixelSize: 14
            font.strikeout: row.completed
            color: row.completed ? appStyle.colors.completedTask : appStyle.colors.taskName
        }

        Loader {
            width: parent.width
            active: row.nameEditing
            visible: active
            sourceComponent: TextField {
                objectName: "nameEditor"
                text: row.taskName
                maximumLength: 500
                placeholderText: qsTr("Input task name")
                font.pixelSize: 14
                selectByMouse: true
                Component.onCompleted: forceActiveFocus()
                onAccepted: row.saveName(text)
                Keys.onEscapePressed: row.nameEditing = false
            }
        }

        Row {
            spacing: 12
            visible: dateLabel.text !== "" || projectLabel.text !== "" || contextLabel.text !== ""
                     || reminderMark.visible || repeatMark.visible

            StyledLabel {
                id: dateLabel
                objectName: "taskDateLabel"
                readonly property string start: row.formatDate(row.task.START)
                readonly property string due: row.formatDate(row.task.DUE)
                text: start !== "" && due !== "" && start !== due ? start + " \u2013 " + due : due || start
                visible: text !== ""
                color: row.dueColor()
                font.pixelSize: 12

                MouseArea {
                    anchors.fill: parent
                    enabled: !row.completed && !row.trashMode
                    onClicked: row.showProperties()
                }
            }

            StyledLabel {
                id: repeatMark
                visible: row.task.PERIOD !== undefined && row.task.PERIOD !== "" || row.isRepeatedTask
                text: "\u21BB"
                color: appStyle.colors.lightGray
                font.pixelSize: 12
            }

            StyledLabel {
                id: reminderMark
                visible: row.task.HAS_REMINDERS === true
                text: "\u23F0"
                color: appStyle.colors.lightGray
                font.pixelSize: 12
            }

            StyledLabel {
                id: projectLabel
                objectName: "taskProjectLabel"
                text: row.chainText(row.task.PARENT ? ProjectHandler.getProjectNameChain(row.task.PARENT) : [])
                visible: text !== "" && (!row.listPage || row.listPage.showProjectNamesChain !== false)
                color: Settings.applicationColor
                font.pixelSize: 12

                MouseArea {
                    anchors.fill: parent
                    enabled: !row.completed && !row.trashMode
                    onDoubleClicked: row.goToProject()
                }
            }

            StyledLabel {
                id: contextLabel
                objectName: "taskContextLabel"
                text: row.chainText(row.task.CONTEXT ? ContextHandler.getContextNameChain(row.task.CONTEXT) : [])
                visible: text !== ""
                color: appStyle.colors.darkBlue
                font.pixelSize: 12

                MouseArea {
                    anchors.fill: parent
                    enabled: !row.completed && !row.trashMode
                    onDoubleClicked: row.goToContext()
                }
            }
        }

        StyledLabel {
            objectName: "taskMemoLabel"
            width: parent.width
            visible: row.memoOpen && !row.memoEditing && row.memo !== ""
            text: row.textDecorator(row.memo)
            textFormat: Text.RichText
            wrapMode: Text.Wrap
            color: appStyle.colors.memoText
            font.pixelSize: 12

            MouseArea {
                anchors.fill: parent
                enabled: !row.completed && !row.trashMode
                onDoubleClicked: row.memoEditing = true
            }
        }

        Loader {
            id: memoEditor
            width: parent.width
            active: row.memoEditing
            visible: active
            sourceComponent: TextArea {
                objectName: "memoEditor"
                text: row.memo
                placeholderText: qsTr("Input memo text")
                wrapMode: TextEdit.Wrap
                font.pixelSize: 12
                selectByMouse: true
                Component.onCompleted: forceActiveFocus()
                onTextChanged: {
                    if (length > 1024)
                        remove(1024, length)
                }
                Keys.onReturnPressed: {
                    if (event.modifiers & Qt.ShiftModifier)
                        insert(cursorPosition, "\n")
                    else
                        row.saveMemo(text)
                }
            }
        }
    }

    Row {
        id: buttons
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 6

        RowButton {
            objectName: "memoButton"
            visible: row.showButtons
            glyph: "\u2261"
            highlighted: row.memoOpen
            onClicked: row.switchDescription()
        }

        RowButton {
            objectName: "favoriteButton"
            visible: (row.showButtons || row.favorite) && !row.trashMode
            glyph: row.favorite ? "\u2605" : "\u2606"
            highlighted: row.favorite
            onClicked: row.toggleFavorite()
        }

        RowButton {
            objectName: "editButton"
            visible: row.showButtons
            glyph: "\u270E"
            onClicked: row.showProperties()
        }

        Column {
            visible: row.trashMode
            spacing: 2

            Button {
                objectName: "restoreButton_" + row.taskName
                text: qsTr("Restore")
                // Shown on hover but always there, so that moving onto it never hides it.
            opacity: row.hovered || hovered ? 1 : 0
                onClicked: TaskHandler.restoreTask(row.task)
            }

            StyledLabel {
                objectName: "daysLeftLabel"
                anchors.horizontalCenter: parent.horizontalCenter
                text: qsTr("%n day(s)", "", row.daysLeft())
                color: appStyle.colors.lightGray
                font.pixelSize: 11
            }
        }
    }

    Component {
        id: taskMenu

        NvMenu {
            property bool multiSelectionItemsOnly: false

            NvMenuItem {
                visible: !multiSelectionItemsOnly
                height: visible ? implicitHeight : 0
                label: row.completed ? qsTr("Mark as not complete") : qsTr("Mark as completed")
                onActivated: row.toggleCompletion()
            }
            NvMenuItem {
                visible: !multiSelectionItemsOnly
                height: visible ? implicitHeight : 0
                label: row.favorite ? qsTr("Remove from Favorites") : qsTr("Add to Favorites")
                onActivated: row.toggleFavorite()
            }
            NvMenuItem {
                visible: !multiSelectionItemsOnly && !!row.task.PARENT
                height: visible ? implicitHeight : 0
                label: qsTr("Go to this project")
                onActivated: row.goToProject()
            }
            NvMenuItem {
                visible: !multiSelectionItemsOnly && !!row.task.CONTEXT
                height: visible ? implicitHeight : 0
                label: qsTr("Go to this context")
                onActivated: row.goToContext()
            }
            NvMenuItem {
                visible: !multiSelectionItemsOnly
                height: visible ? implicitHeight : 0
                label: qsTr("Edit Task")
                onActivated: row.showProperties()
            }
            NvMenuItem {
                label: multiSelectionItemsOnly ? qsTr("Delete selected items") : qsTr("Delete Task")
                onActivated: row.deleteItem()
            }
            NvMenuItem {
                visible: !multiSelectionItemsOnly
                height: visible ? implicitHeight : 0
                objectName: "taskMenuCut"
                available: !row.isRepeatedTask
                label: qsTr("Cut")
                onActivated: row.cut()
            }
            NvMenuItem {
                visible: !multiSelectionItemsOnly
                height: visible ? implicitHeight : 0
                objectName: "taskMenuCopy"
                available: !row.isRepeatedTask
                label: qsTr("Copy")
                onActivated: row.copy()
            }
        }
    }
}

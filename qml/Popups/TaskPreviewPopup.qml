import QtQuick 2.15
import com.kelmora.helpers 1.0
import QtQuick.Controls 2.15
import "../Components"
import "../ContentFragments"
import "../ContentFragments/DateRules.js" as DateRules

// The read-first card of one task; name, memo and dates can be changed one at a time.
RoundedPopup {
    id: popup

    property var taskToPreview
    property var task: taskToPreview
    readonly property bool completed: task.STATE === COMPLETED_OBJECT_STATE
    readonly property bool hasStart: DateRules.isValid(task.START)
    readonly property bool hasDue: DateRules.isValid(task.DUE)
    readonly property bool repeating: task.PERIOD !== undefined && task.PERIOD !== ""
    property var remindersVersion: 0

    // Closes an open inline editor and tells whether it did.
    function handleEscapeKey() {
        if (!nameEdit.visible && !memoEdit.visible)
            return false
        nameEdit.visible = false
        memoEdit.visible = false
        return true
    }

    function hideWithAnimation() {
        destroyPopup()
    }

    function saveCopy(copy) {
        objectUpdater.updateTask(copy)
        DataManager.rescheduleReminders(task, copy)
        task = copy
        ++remindersVersion
    }

    function copyOfTask() {
        return Object.assign({}, task)
    }

    function saveField(key, text) {
        var copy = copyOfTask()
        copy[key] = text
        saveCopy(copy)
    }

    // A weekly or daily occurrence keeps start and due on one day.
    function dateEdited(dateTime) {
        var copy = copyOfTask()
        var key = hasDue || !hasStart ? "DUE" : "START"
        copy[key] = dateTime
        if (key === "DUE" && repeating && task.PERIOD.indexOf("m") !== 0 && DateRules.isValid(copy.START)
                && DateRules.isValid(dateTime))
            copy.START = DateRules.onDay(dateTime, copy.START.getUTCHours(), copy.START.getUTCMinutes())
        DateRules.correctDates(copy)
        saveCopy(copy)
    }

    // The project picker comes with the tree popups; without it the action does nothing.
    function moveToOtherProject(item) {
        var picker = popupHelper.showTreeViewPopup({ "treeModelType": "PROJECT" })
        picker.placeNear(item)
        picker.selectTreeItem(task.PARENT)
        picker.itemChanged.connect(function (projectId) { saveField("PARENT", projectId) })
    }

    function openDateEditor(item, x, y) {
        var editor = popupHelper.showDateTimeEditPopup({ "initialDateTime": hasDue ? task.DUE : task.START,
                                                          "destroyOnClick": true })
        var point = item.mapToItem(editor, x, y)
        editor.moveTo(point.x, point.y)
        editor.dateTimeEdited.connect(dateEdited)
    }

    function reminderLines() {
        var lines = []
        for (var type = 0; type <= 8; ++type) {
            if (DataManager.hasScheduledReminder({ "ID": task.ID, "STARTDATE": task.START }, type)
                    || DataManager.hasStartRepeatedReminder(task.ID, type))
                lines.push(ReminderFormatHelper.formatReminderForPreviewSection(type, true))
            if (DataManager.hasScheduledReminder({ "ID": task.ID, "DUEDATE": task.DUE }, type)
                    || DataManager.hasDueRepeatedReminder(task.ID, type))
                lines.push(ReminderFormatHelper.formatReminderForPreviewSection(type, false))
        }
        return lines
    }

    function complete() {
        if (completed) {
            var copy = copyOfTask()
            copy.STATE = DEFAULT_OBJECT_STATE
            objectUpdater.updateTask(copy)
            hideWithAnimation()
            return
        }
        completeButton.text = "✔"
        FunctionHelper.delayFunctionCall(100, function () {
            objectUpdater.completeTask(popup.task)
            popup.hideWithAnimation()
        })
    }

    function deleteTask() {
        popupHelper.showUndoPopup([task])
        TaskHandler.markTaskAsDeleted(task)
        hideWithAnimation()
    }

    objectName: "TaskPreviewPopup"
    destroyOnClick: true
    useAnchors: true
    popupWidth: 600
    // As tall as what it shows, and never taller than the window.
    popupHeight: Math.min(height - 32, content.height + 40)
    focus: true

    Keys.onEscapePressed: if (!handleEscapeKey()) hideWithAnimation()

    Column {
        id: content
        x: 24
        y: 16
        width: popup.popupWidth - 48
        spacing: 14

        Item {
            width: parent.width
            height: 30

            StyledLabel {
                objectName: "previewDateLine"
                anchors.verticalCenter: parent.verticalCenter
                visible: popup.hasDue
                text: DateFormatHelper.formatDatesForPreviewHeader(popup.task.START, popup.task.DUE)
                color: popup.hasDue && popup.task.DUE < DateRules.wallNow() ? appStyle.colors.red : appStyle.applicationColor
            }

            EditorButton {
                objectName: "previewCloseButton"
                anchors.right: parent.right
                text: "✕"
                onClicked: popup.hideWithAnimation()
            }
        }

        StyledLabel {
            objectName: "previewTitle"
            width: parent.width
            visible: !nameEdit.visible
            text: popup.task.NAME
            font.pixelSize: 20
            font.bold: true
            wrapMode: Text.Wrap
            MouseArea {
                anchors.fill: parent
                onDoubleClicked: {
                    nameEdit.text = popup.task.NAME
                    nameEdit.visible = true
                    nameEdit.forceActiveFocus()
                }
            }
        }

        TextField {
            id: nameEdit
            objectName: "previewTitleEdit"
            width: parent.width
            visible: false
            maximumLength: 500
            onAccepted: {
                if (text.trim() !== "")
                    popup.saveField("NAME", text.trim())
                visible = false
            }
            Keys.onEscapePressed: popup.handleEscapeKey()
        }

        StyledLabel {
            objectName: "previewMemo"
            width: parent.width
            visible: !memoEdit.visible
            text: popup.task.MEMO || qsTr("Enter memo")
            color: popup.task.MEMO ? appStyle.colors.memoText : appStyle.colors.lightGray
            wrapMode: Text.Wrap
            MouseArea {
                anchors.fill: parent
                onDoubleClicked: {
                    memoEdit.text = popup.task.MEMO || ""
                    memoEdit.visible = true
                    memoEdit.forceActiveFocus()
                }
            }
        }

        TextField {
            id: memoEdit
            width: parent.width
            visible: false
            maximumLength: 1024
            onAccepted: {
                popup.saveField("MEMO", text.trim())
                visible = false
            }
            Keys.onEscapePressed: popup.handleEscapeKey()
        }

        PreviewSection {
            objectName: "previewRepetitionSection"
            visible: popup.repeating
            title: popup.repeating ? RepetitionFormatHelper.formatRepetitionForPreview(popup.task.PERIOD) : ""
            text: popup.repeating ? RepetitionFormatHelper.formatNextDateForPreview(popup.task.PERIOD, popup.task.START,
                                                                                     popup.task.DUE) : ""
            onClicked: popup.openDateEditor(item, x, y)
        }

        PreviewSection {
            objectName: "previewRemindersSection"
            readonly property var lines: popup.remindersVersion >= 0 ? popup.reminderLines() : []
            visible: lines.length > 0
            title: qsTr("Reminders")
            text: lines.join("\n")
        }

        PreviewSection {
            objectName: "previewDatesSection"
            visible: !popup.repeating && (popup.hasStart || popup.hasDue)
            title: qsTr("Task Dates")
            text: visible ? DateFormatHelper.formatDatesForPreviewSection(popup.task.START, popup.task.DUE) : ""
            onClicked: popup.openDateEditor(item, x, y)
        }

        PreviewSection {
            objectName: "previewProjectSection"
            title: qsTr("Project")
            text: ProjectHandler.getProjectNameChain(popup.task.PARENT).join(" > ").replace(/\n/g, " ")
        }

        PreviewSection {
            objectName: "previewContextSection"
            visible: !!popup.task.CONTEXT
            title: qsTr("Context")
            text: visible ? ContextHandler.getContextNameChain(popup.task.CONTEXT).join(" > ") : ""
        }

        Row {
            spacing: 10

            EditorButton {
                property bool inFavorites: TaskHandler.inFavorites(popup.task)
                objectName: "previewFavoriteButton"
                visible: !popup.completed
                text: inFavorites ? qsTr("Remove from Favorites") : qsTr("Add to Favorites")
                onClicked: {
                    if (inFavorites)
                        TaskHandler.removeFromFavorites(popup.task)
                    else
                        TaskHandler.addToFavorites(popup.task)
                    inFavorites = !inFavorites
                }
            }

            EditorButton {
                objectName: "previewEditButton"
                text: qsTr("Edit")
                onClicked: {
                    popupHelper.showEditTaskPopup(popup.task)
                    popup.hideWithAnimation()
                }
            }

            EditorButton {
                objectName: "previewDeleteButton"
                text: qsTr("Delete")
                onClicked: popup.deleteTask()
            }

            EditorButton {
                id: completeButton
                objectName: "previewCompleteButton"
                text: popup.completed ? "✔" : "○"
                onClicked: popup.complete()
            }
        }

        Rectangle {
            width: parent.width
            height: actions.implicitHeight
            radius: 6
            color: "transparent"
            border.color: appStyle.components.toolBar.borderColor

            Column {
                id: actions
                width: parent.width

                ItemDelegate {
                    id: moveAction
                    objectName: "previewMoveAction"
                    width: parent.width
                    contentItem: StyledLabel {
                        text: qsTr("Move to other project")
                        color: appStyle.applicationColor
                        verticalAlignment: Text.AlignVCenter
                    }
                    background: Item {}
                    onClicked: popup.moveToOtherProject(moveAction)
                }
            }
        }
    }
}

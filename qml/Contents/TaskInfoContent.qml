import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import com.kelmora.managers 1.0
import "../Components"
import "../ContentFragments"
import "../ContentFragments/DateRules.js" as DateRules

// The task editor's four tabs. Nothing is written until the popup saves getResultObject().
Item {
    id: content

    objectName: "taskInfoContent"

    property string projectId
    property string contextId
    property bool favorite: false
    property var taskId
    property var selectedStartReminders: []
    property var selectedDueReminders: []
    property var availableStartReminders: []
    property var availableDueReminders: []
    // Up while fields are filled or dates are set by the program, so no change looks like the user's.
    property bool initializing: false
    property bool datesGuard: false
    // Up while the one-date form copies its dates into the two-date form, which it must not hear back.
    property bool oneDateWriting: false

    signal requestSave()

    function initializeWithObject(task) {
        initializing = true
        taskId = task.ID
        nameField.text = task.NAME
        memoField.text = task.MEMO || ""
        projectId = task.PARENT || ""
        contextId = task.CONTEXT || ""
        startField.dateTime = DateRules.isValid(task.START) ? task.START : undefined
        dueField.dateTime = DateRules.isValid(task.DUE) ? task.DUE : undefined
        completeButton.checked = task.STATE === COMPLETED_OBJECT_STATE
        repetition.initWithPeriodString(task.PERIOD)
        repetition.setDates(startField.dateTime, dueField.dateTime)
        favorite = TaskHandler.inFavorites(task)
        selectedStartReminders = scheduledReminders(task, "STARTDATE", function (id, type) {
            return DataManager.hasStartRepeatedReminder(id, type)
        })
        selectedDueReminders = scheduledReminders(task, "DUEDATE", function (id, type) {
            return DataManager.hasDueRepeatedReminder(id, type)
        })
        initializing = false
    }

    function scheduledReminders(task, dateKey, hasRepeated) {
        var types = []
        var info = { "ID": task.ID }
        info[dateKey] = dateKey === "STARTDATE" ? task.START : task.DUE
        for (var type = NotificationEnum.AtTimeOfEvent; type <= NotificationEnum.TwoDays; ++type) {
            if (DataManager.hasScheduledReminder(info, type) || hasRepeated(task.ID, type))
                types.push(type)
        }
        return types
    }

    function focusName() {
        nameField.forceActiveFocus()
    }

    function initializeWithParent(parentId) { projectId = parentId }
    function initializeWithContext(newContextId) { contextId = newContextId }
    function initializeWithDueDateTime(dateTime) {
        dueField.dateTime = dateTime
        repetition.setDates(startField.dateTime, dateTime)
    }
    function initializeAsFavorite() { favorite = true }

    function getResultObject() {
        var completed = completeButton.checked
        var task = { "NAME": nameField.text.trim(), "MEMO": memoField.text.trim(), "PARENT": projectId,
                     "CONTEXT": contextId, "START": startField.dateTime, "DUE": dueField.dateTime,
                     "STATE": completed ? COMPLETED_OBJECT_STATE : DEFAULT_OBJECT_STATE,
                     "PERIOD": repetition.getPeriodString(), "FAVORITE": favorite && !completed,
                     "SREMINDERS": selectedStartReminders, "EREMINDERS": selectedDueReminders }
        if (taskId !== undefined)
            task.ID = taskId
        return task
    }

    // A repetition needs dates: missing ones come from today at the default times.
    function applyRepetitionDefaults() {
        datesGuard = true
        if (!DateRules.isValid(startField.dateTime))
            startField.dateTime = DateRules.todayAt(Settings.defaultStartTime)
        if (!DateRules.isValid(dueField.dateTime)) {
            var due = DateRules.todayAt(Settings.defaultDueTime)
            if (startField.dateTime > due)
                due.setUTCDate(startField.dateTime.getUTCDate() + 1)
            dueField.dateTime = due
        }
        if (repetition.isDailyOrWeekly)
            copyOneDateForm()
        repetition.setDates(startField.dateTime, dueField.dateTime)
        datesGuard = false
    }

    function datesEdited() {
        if (!datesGuard && !initializing)
            repetition.setDates(startField.dateTime, dueField.dateTime)
    }

    // The two-date form stays the source of the result, so the one-date form writes into it.
    function copyOneDateForm() {
        oneDateWriting = true
        startField.dateTime = oneDate.startDateTime
        dueField.dateTime = oneDate.dueDateTime
        oneDateWriting = false
    }

    function oneDateEdited() {
        copyOneDateForm()
        datesEdited()
    }

    function twoDateFormChanged() {
        if (!oneDateWriting)
            oneDate.setDates(startField.dateTime, dueField.dateTime)
    }

    // The form that has just appeared decides the dates: a daily or weekly task starts and ends on one day.
    function dateFormSwitched() {
        if (!DateRules.isValid(startField.dateTime) && !DateRules.isValid(dueField.dateTime))
            return
        if (repetition.isDailyOrWeekly)
            copyOneDateForm()
        repetition.setDates(startField.dateTime, dueField.dateTime)
    }

    function reminderTitle(type, place) {
        var titles = [place === "start" ? qsTr("When task is active") : qsTr("When task is overdue"),
                      qsTr("5 min before %1"), qsTr("15 min before %1"), qsTr("30 min before %1"),
                      qsTr("1 hour before %1"), qsTr("2 hours before %1"), qsTr("3 hours before %1"),
                      qsTr("1 day before %1"), qsTr("2 days before %1")]
        return type === 0 ? titles[0] : titles[type].arg(place === "start" ? qsTr("start") : qsTr("deadline"))
    }

    function rebuildReminderLists() {
        availableStartReminders = DateRules.reminderTypesAvailable(startField.dateTime)
        availableDueReminders = DateRules.reminderTypesAvailable(dueField.dateTime)
    }

    function toggled(list, type) {
        var result = list.slice()
        var index = result.indexOf(type)
        if (index >= 0)
            result.splice(index, 1)
        else
            result.push(type)
        return result.sort(function (a, b) { return a - b })
    }

    // The editor takes the keys back when the picker goes.
    function openPicker(anchor, type, currentId, onChosen) {
        var picker = popupHelper.showTreeViewPopup({ "treeModelType": type })
        picker.placeNear(anchor)
        picker.selectTreeItem(currentId)
        picker.itemChanged.connect(onChosen)
        picker.aboutToBeDestroyed.connect(function () { content.forceActiveFocus() })
    }

    function closeDateEditors() {
        if (startField.editPopup)
            startField.editPopup.destroyPopup()
        if (dueField.editPopup)
            dueField.editPopup.destroyPopup()
    }

    Keys.onPressed: {
        if ((event.key === Qt.Key_S || event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
                && (event.modifiers & Qt.ControlModifier)) {
            requestSave()
            event.accepted = true
        }
    }

    TabBar {
        id: tabBar
        objectName: "taskEditorTabs"
        width: parent.width
        background: Item {}
        onCurrentIndexChanged: {
            if (currentIndex === 0 && nameField.text === "")
                nameField.forceActiveFocus()
            else if (currentIndex === 2)
                content.rebuildReminderLists()
            else if (currentIndex === 3 && memoField.text === "")
                memoField.forceActiveFocus()
        }

        EditorTab { objectName: "generalTab"; text: qsTr("General") }
        EditorTab { objectName: "metadataTab"; text: qsTr("Metadata") }
        EditorTab { objectName: "remindersTab"; text: qsTr("Reminders") }
        EditorTab { objectName: "memoTab"; text: qsTr("Memo") }
    }

    StackLayout {
        anchors.top: tabBar.bottom
        anchors.topMargin: 16
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        currentIndex: tabBar.currentIndex

        Flickable {
            contentHeight: general.implicitHeight
            clip: true

            Column {
                id: general
                width: parent.width
                spacing: 12

                StyledLabel { text: qsTr("Task name"); font.bold: true }

                TextArea {
                    id: nameField
                    objectName: "taskNameField"
                    width: parent.width
                    placeholderText: qsTr("Enter task name")
                    wrapMode: TextEdit.Wrap
                    color: appStyle.colors.taskName
                    onTextChanged: if (length > 500) remove(500, length)
                }

                StyledLabel { text: "Сроки задачи"; font.bold: true }

                DateTimeFragment {
                    id: startField
                    objectName: "startDateField"
                    visible: !repetition.isDailyOrWeekly
                    width: parent.width
                    title: "Начать:"
                    defaultTime: Settings.defaultStartTime
                    onEdited: content.datesEdited()
                    onDateTimeChanged: content.twoDateFormChanged()
                }

                DateTimeFragment {
                    id: dueField
                    objectName: "dueDateField"
                    visible: !repetition.isDailyOrWeekly
                    width: parent.width
                    title: "Закончить до:"
                    defaultTime: Settings.defaultDueTime
                    onEdited: content.datesEdited()
                    onDateTimeChanged: content.twoDateFormChanged()
                }

                OneDateFragment {
                    id: oneDate
                    objectName: "oneDateForm"
                    visible: repetition.isDailyOrWeekly
                    width: parent.width
                    onEdited: content.oneDateEdited()
                }

                TaskRepetitionFragment {
                    id: repetition
                    objectName: "taskRepetition"
                    width: parent.width
                    onActiveChanged: if (active && !content.initializing) content.applyRepetitionDefaults()
                    // Later, since the check may switch the rule off again while this change is still on its way.
                    onIsDailyOrWeeklyChanged: if (!content.initializing) Qt.callLater(content.dateFormSwitched)
                    onDatesUpdated: {
                        content.datesGuard = true
                        startField.dateTime = start
                        dueField.dateTime = end
                        content.datesGuard = false
                    }
                }

                StyledLabel { text: qsTr("Task status"); font.bold: true }

                Row {
                    spacing: 12
                    StatusButton { objectName: "activeStatusButton"; text: qsTr("Active"); checked: !completeButton.checked }
                    StatusButton { id: completeButton; objectName: "completeStatusButton"; text: qsTr("Complete") }
                }
            }
        }

        Column {
            spacing: 12

            ComboBoxFragment {
                id: projectField
                objectName: "projectPicker"
                width: parent.width
                title: qsTr("Project")
                text: ProjectHandler.getProjectNameChain(content.projectId).join(" > ")
                onClicked: content.openPicker(projectField, "PROJECT", content.projectId, function (id) {
                    content.projectId = id
                })
            }
            ComboBoxFragment {
                id: contextField
                objectName: "contextPicker"
                width: parent.width
                title: qsTr("Context")
                text: content.contextId === "" ? qsTr("No context")
                                               : ContextHandler.getContextNameChain(content.contextId).join(" > ")
                onClicked: content.openPicker(contextField, "CONTEXT", content.contextId, function (id) {
                    content.contextId = id
                })
            }
            SwitchFragment {
                objectName: "favoriteSwitch"
                visible: !completeButton.checked
                text: content.favorite ? qsTr("Remove from Favorites") : qsTr("Add to Favorites")
                checked: content.favorite
                onToggled: content.favorite = checked
            }
        }

        Column {
            spacing: 6

            Row {
                width: parent.width
                spacing: 12

                Repeater {
                    model: [{ "title": qsTr("Remind before start"), "place": "start" },
                            { "title": qsTr("Remind before deadline"), "place": "deadline" }]

                    Column {
                        readonly property bool isStart: modelData.place === "start"
                        readonly property var types: isStart ? content.availableStartReminders
                                                             : content.availableDueReminders
                        readonly property var selected: isStart ? content.selectedStartReminders
                                                                : content.selectedDueReminders
                        visible: types.length > 0
                        width: (content.width - 12) / 2

                        StyledLabel { text: modelData.title; font.bold: true }

                        Repeater {
                            model: parent.types

                            CheckDelegate {
                                readonly property bool isStart: parent.isStart
                                objectName: (isStart ? "startReminder_" : "dueReminder_") + modelData
                                width: parent.width
                                height: 34
                                text: content.reminderTitle(modelData, isStart ? "start" : "deadline")
                                checked: parent.selected.indexOf(modelData) >= 0
                                onClicked: {
                                    if (isStart)
                                        content.selectedStartReminders = content.toggled(content.selectedStartReminders, modelData)
                                    else
                                        content.selectedDueReminders = content.toggled(content.selectedDueReminders, modelData)
                                }
                            }
                        }
                    }
                }
            }

            StyledLabel {
                id: noRemindersNote
                objectName: "noRemindersNote"
                visible: content.availableStartReminders.length === 0 && content.availableDueReminders.length === 0
                text: DateRules.isValid(startField.dateTime) || DateRules.isValid(dueField.dateTime)
                      ? qsTr("Task has already started or overdue.\nPlease adjust its dates to add a reminder")
                      : qsTr("To add a reminder for this task please add\na start or due date first")
            }

            EditorButton {
                visible: noRemindersNote.visible
                text: qsTr("Setup dates")
                onClicked: tabBar.currentIndex = 0
            }
        }

        Column {
            spacing: 12

            StyledLabel { text: qsTr("Optional memo"); font.bold: true }

            TextArea {
                id: memoField
                objectName: "taskMemoField"
                width: parent.width
                height: 200
                placeholderText: qsTr("Enter memo")
                wrapMode: TextEdit.Wrap
                color: appStyle.colors.taskName
                onTextChanged: if (length > 1024) remove(1024, length)
            }
        }
    }
}

import QtQuick 2.15
import "../Contents"
import "../ContentFragments/DateRules.js" as DateRules

// The editor of a new or existing task. Saving runs the services in a fixed order: the task, the
// favorite mark, then its reminders afresh.
BaseInfoPopup {
    id: popup

    property string projectId
    property string contextId
    property var dueDateTime
    property bool isFavorite: false

    function scheduleReminders(task, types, dateKey, setRepeated) {
        types.forEach(function (type) {
            var info = { "ID": task.ID, "NAME": task.NAME }
            info[dateKey] = dateKey === "STARTDATE" ? task.START : task.DUE
            DataManager.scheduleReminder(info, type)
            if (task.PERIOD !== "")
                setRepeated(task.ID, type)
        })
    }

    function save() {
        var task = editor.getResultObject()
        // An edit keeps what the editor does not show.
        for (var key in objectToEdit || {}) {
            if (task[key] === undefined)
                task[key] = objectToEdit[key]
        }
        if (task.NAME === "") {
            popupHelper.showMessageDialog(qsTr("Save Error"), qsTr("Please input task name"))
            return
        }
        editor.closeDateEditors()
        var favorite = task.FAVORITE
        delete task.FAVORITE
        DateRules.correctDates(task)
        var startReminders = task.SREMINDERS
        var dueReminders = task.EREMINDERS
        delete task.SREMINDERS
        delete task.EREMINDERS
        if (!saveObjectFunc(task))
            return
        // The id of a new row is given by the store, which remembers the last one it made.
        if (!objectToEdit)
            task.ID = DataManager.lastCreatedObjectId()
        if (favorite)
            TaskHandler.addToFavorites(task)
        else if (objectToEdit)
            TaskHandler.removeFromFavorites(task)
        DataManager.removeAllRemindersById(task.ID)
        DataManager.removeAllRepeatedReminders(task.ID)
        scheduleReminders(task, startReminders, "STARTDATE", function (id, type) {
            DataManager.setStartRepeatedReminder(id, type)
        })
        scheduleReminders(task, dueReminders, "DUEDATE", function (id, type) {
            DataManager.setDueRepeatedReminder(id, type)
        })
        hideWithAnimation()
    }

    objectName: "TaskInfoPopup"
    titleText: objectToEdit ? qsTr("Edit") : qsTr("New task")
    createObjectFunc: function (task) { return TaskHandler.createTask(task) }
    updateObjectFunc: function (task) { return TaskHandler.updateTask(task) }
    onSaveClicked: save()

    content: TaskInfoContent {
        id: editor
        anchors.fill: parent
        onRequestSave: popup.save()
    }

    Component.onCompleted: {
        if (objectToEdit) {
            editor.initializeWithObject(objectToEdit)
            return
        }
        if (projectId !== "")
            editor.initializeWithParent(projectId)
        if (contextId !== "")
            editor.initializeWithContext(contextId)
        if (DateRules.isValid(dueDateTime))
            editor.initializeWithDueDateTime(dueDateTime)
        if (isFavorite)
            editor.initializeAsFavorite()
    }

    Connections {
        target: contentItem
        function onRequestSave() { popup.save() }
    }
}

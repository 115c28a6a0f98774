import QtQuick 2.15
import com.kelmora.helpers 1.0

// The one path through which list rows save an edited object and keep its reminders in step.
// The queue is committed at once; it keeps the shape of a save that may be postponed.
QtObject {
    id: updater

    property var objectsToSave: []
    property var functionsToSave: []
    property var tasksToRemove: []

    function updateTask(task) {
        addObjectToArray(task, function (object) { return TaskHandler.updateTask(object) })
    }

    function updateProject(project) {
        addObjectToArray(project, function (object) { return ProjectHandler.updateProject(object) })
    }

    function updateContext(context) {
        addObjectToArray(context, function (object) { return ContextHandler.updateContext(object) })
    }

    function addObjectToArray(object, updateFunction) {
        var index = objectsToSave.findIndex(function (queued) { return queued.ID === object.ID })
        if (index >= 0) {
            objectsToSave[index] = object
            functionsToSave[index] = updateFunction
        } else {
            objectsToSave.push(object)
            functionsToSave.push(updateFunction)
        }
        commit()
    }

    function scheduleRepeatedReminders(taskId) {
        var task = TaskHandler.getTaskById(taskId)
        DataManager.getStartRepeatedReminders(taskId).forEach(function (type) {
            DataManager.scheduleReminder({ "ID": taskId, "NAME": task.NAME, "STARTDATE": task.START }, type)
        })
        DataManager.getDueRepeatedReminders(taskId).forEach(function (type) {
            DataManager.scheduleReminder({ "ID": taskId, "NAME": task.NAME, "DUEDATE": task.DUE }, type)
        })
    }

    function commit() {
        Logger.info("ObjectUpdater: committing object into DB. Count: %1".arg(objectsToSave.length))
        for (var i = 0; i < objectsToSave.length; ++i) {
            var object = objectsToSave[i]
            functionsToSave[i](object)
            if (object.PERIOD === undefined)
                continue
            if (object.STATE !== DEFAULT_OBJECT_STATE || tasksToRemove.indexOf(object.ID) >= 0)
                DataManager.removeAllRemindersById(object.ID)
            // The service has moved a completed repeating task to its next dates: remind on those.
            if (object.STATE === COMPLETED_OBJECT_STATE && object.PERIOD !== "")
                scheduleRepeatedReminders(object.ID)
        }
        objectsToSave = []
        functionsToSave = []
        tasksToRemove = []
        Logger.info("ObjectUpdater: objects saved into DB")
    }

    function selectAfterUndo(objectId) {
        var page = pageLoader.currentListPage
        if (!page || typeof page.getIndexByObjectId !== "function")
            return
        var index = page.getIndexByObjectId(objectId)
        if (index >= 0)
            FunctionHelper.callAfterProcessEventQueue(function () { page.setCurrentIndex(index) })
        else if (page.navigationElement && typeof page.navigationElement.selectItemById === "function")
            page.navigationElement.selectItemById(objectId)
    }

    function completeTask(task) {
        popupHelper.showUndoPopupWithCallbacks(qsTr("You completed a task") + " 👍", function () {
            TaskHandler.confirmTaskUpdate(task)
            DataManager.cleanSortedLists()
        }, function () {
            TaskHandler.revertTaskState(task)
            var page = pageLoader.currentListPage
            if (page && page.currentIndex !== undefined && page.currentIndex >= 0)
                selectAfterUndo(task.ID)
        })
        TaskHandler.markTaskAsCompleted(task)
    }

    function completeProject(project) {
        popupHelper.showUndoPopupWithCallbacks(qsTr("You completed a project") + " 💪", function () {
            project["STATE"] = COMPLETED_OBJECT_STATE
            ProjectHandler.confirmProjectUpdate(project)
            DataManager.cleanSortedLists()
        }, function () {
            ProjectHandler.revertProjectState(project)
            selectAfterUndo(project.ID)
        })
        ProjectHandler.markProjectAsCompleted(project)
    }
}

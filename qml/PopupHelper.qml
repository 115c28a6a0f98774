import QtQuick 2.15
import com.kelmora.helpers 1.0

// The one way popups come into being: each is built here with its start parameters, and the count
// of visible popups disables the menus.
Item {
    id: helper

    property int visiblePopupCount: 0
    readonly property bool isPopupVisible: visiblePopupCount > 0

    function createPopup(file, parent, params) {
        var component = Qt.createComponent("qrc:/Popups/" + file + ".qml")
        if (component.status !== Component.Ready) {
            Logger.error("Unable to create popup " + file + ": " + component.errorString())
            return null
        }
        var popup = component.createObject(parent || contentItem, params || {})
        popup.aboutToBeDestroyed.connect(function () { --helper.visiblePopupCount })
        return popup
    }

    function showPopup(file, parent, params) {
        var popup = createPopup(file, parent, params)
        if (!popup)
            return null
        popup.show()
        if (typeof popup.takeFocus === "function")
            popup.takeFocus()
        else
            popup.forceActiveFocus()
        ++visiblePopupCount
        return popup
    }

    // Shown a moment later, so that a dialog opened from a menu's handler is not closed by the same event.
    function showDialog(params, yesCallback) {
        var popup = createPopup("MessagePopup", contentItem, params)
        if (!popup)
            return null
        if (yesCallback)
            popup.accepted.connect(yesCallback)
        FunctionHelper.delayFunctionCall(50, function () {
            popup.show()
            popup.forceActiveFocus()
            ++helper.visiblePopupCount
        })
        return popup
    }

    function showMessageDialog(title, message, yesCallback, acceptButtonText) {
        return showDialog({ "titleText": title, "messageText": message, "rejectButtonVisible": false,
                            "acceptButtonText": acceptButtonText || qsTr("Ok") }, yesCallback)
    }

    function showNewMessageDialog(title, message, yesCallback, acceptButtonText) {
        return showMessageDialog(title, message, yesCallback, acceptButtonText || qsTr("OK"))
    }

    function showErrorDialog(title, message, yesCallback, acceptButtonText) {
        return showNewMessageDialog(title, message, yesCallback, acceptButtonText)
    }

    function showQuestionDialog(title, message, yesCallback, checkBoxText, checkBoxSettingsParam,
                                cancelActive, acceptButtonText) {
        var params = { "titleText": title, "messageText": message, "acceptFocused": !cancelActive,
                       "checkBoxVisible": !!checkBoxText, "checkBoxText": checkBoxText || "",
                       "checkBoxSettingsParam": checkBoxSettingsParam || "" }
        if (acceptButtonText)
            params.acceptButtonText = acceptButtonText
        var popup = showDialog(params, yesCallback)
        if (popup && checkBoxText)
            popup.accepted.connect(function () { Settings[checkBoxSettingsParam] = !popup.checkBoxChecked })
        return popup
    }

    function showTaskInfoPopup(params) {
        return showPopup("TaskInfoPopup", contentItem, params)
    }

    function showNorvelBoxTaskPopup() {
        return showTaskInfoPopup({ "projectId": PredefinedDataHelper.norvelBoxId })
    }

    function showOneStepActionsTaskPopup(context) {
        return showTaskInfoPopup({ "projectId": PredefinedDataHelper.oneStepActionsId, "contextId": context || "" })
    }

    function showFavoriteTaskPopup() {
        return showTaskInfoPopup({ "projectId": PredefinedDataHelper.oneStepActionsId, "isFavorite": true })
    }

    function showTaskPopupWithProject(projectId) {
        return showTaskInfoPopup({ "projectId": projectId })
    }

    // The selected day at the default due time, as a wall-clock value in UTC fields.
    function showDailyPlanTaskPopup(selectedDate) {
        var time = Settings.defaultDueTime.split(":")
        var due = new Date(Date.UTC(selectedDate.getFullYear(), selectedDate.getMonth(), selectedDate.getDate(),
                                    Number(time[0]), Number(time[1])))
        return showTaskInfoPopup({ "projectId": PredefinedDataHelper.oneStepActionsId, "dueDateTime": due })
    }

    function showEditTaskPopup(taskToEdit) {
        return showTaskInfoPopup(taskToEdit ? { "objectToEdit": taskToEdit } : {})
    }

    // The object whose list is open on the current page, "" at a root.
    function currentListParentId() {
        var page = pageLoader.currentPage
        var list = page ? page.currentListPage : null
        return list && list.listObject && list.listObject.ID !== undefined ? list.listObject.ID : ""
    }

    function editOrNew(objectToEdit, parentKey, parentId) {
        var params = {}
        if (objectToEdit)
            params.objectToEdit = objectToEdit
        else
            params[parentKey] = parentId !== undefined ? parentId : currentListParentId()
        return params
    }

    function showProjectPopup(projectToEdit, parentFolderId) {
        return showPopup("ProjectInfoPopup", contentItem, editOrNew(projectToEdit, "parentFolderId", parentFolderId))
    }

    function showProjectInContextPopup(projectToEdit, contextId) {
        return showPopup("ProjectInfoPopup", contentItem, editOrNew(projectToEdit, "contextId", contextId))
    }

    function showProjectPopupInitWithTask(task) {
        return showPopup("ProjectInfoPopup", contentItem, { "taskToConvert": task })
    }

    function showDailyPlanProjectPopup(selectedDate) {
        var time = Settings.defaultDueTime.split(":")
        var due = new Date(Date.UTC(selectedDate.getFullYear(), selectedDate.getMonth(), selectedDate.getDate(),
                                    Number(time[0]), Number(time[1])))
        return showPopup("ProjectInfoPopup", contentItem, { "dueDateTime": due })
    }

    function showFolderPopup(folderToEdit, parentFolderId) {
        return showPopup("FolderInfoPopup", contentItem, editOrNew(folderToEdit, "parentFolderId", parentFolderId))
    }

    function showContextPopup(contextToEdit, parentContextId) {
        return showPopup("ContextInfoPopup", contentItem, editOrNew(contextToEdit, "parentContextId", parentContextId))
    }

    function showTaskPreviewPopup(task) {
        return showPopup("TaskPreviewPopup", contentItem, { "taskToPreview": task })
    }

    // Params may set treeModelType; the caller places the popup with moveTo.
    function showTreeViewPopup(params) {
        return showPopup("TreeViewPopup", contentItem, params)
    }

    function showDateTimeEditPopup(params) {
        return showPopup("DateTimeEditPopup", contentItem, params)
    }

    function showSortingPopup(listId, listType) {
        return showPopup("SortingPopup", contentItem, { "listId": listId, "listType": listType })
    }

    // The popup made last is on top: children are appended in order of creation.
    function getCurrentPopup() {
        if (visiblePopupCount === 0)
            return undefined
        for (var i = contentItem.children.length - 1; i >= 0; --i) {
            var child = contentItem.children[i]
            if (child.aboutToBeDestroyed === undefined || (child.hideOnClick && !child.visible))
                continue
            return child
        }
        return undefined
    }

    function showUndoPopupWithCallbacks(text, acceptCallback, undoCallback) {
        GuiManager.startTrackUserActions()
        statusBar.showUndoMessage(text, acceptCallback, undoCallback)
    }

    function objectType(object) {
        if (object.FOLDER == true)
            return "folder"
        if (object.PERIOD !== undefined)
            return "task"
        if (object.CONTEXT !== undefined)
            return "project"
        return "context"
    }

    function deletionText(objects) {
        if (objects.length > 1)
            return qsTr("You deleted %n item(s)", "", objects.length)
        switch (objectType(objects[0])) {
        case "folder": return qsTr("You deleted a folder")
        case "task": return qsTr("You deleted a task")
        case "project": return qsTr("You deleted a project")
        }
        return qsTr("You deleted a context")
    }

    function confirmDeletion(object) {
        switch (objectType(object)) {
        case "task": TaskHandler.confirmTaskUpdate(object); break
        case "context": ContextHandler.confirmContextUpdate(object); break
        default: ProjectHandler.confirmProjectUpdate(object)
        }
    }

    function revertDeletion(object, isLast) {
        switch (objectType(object)) {
        case "task": TaskHandler.revertTaskState(object, isLast); break
        case "context": ContextHandler.revertContextState(object, isLast); break
        default: ProjectHandler.revertProjectState(object, isLast)
        }
    }

    // Callers show the offer first and mark the objects as deleted afterwards.
    function showUndoPopup(objects) {
        showUndoPopupWithCallbacks(deletionText(objects), function () {
            objects.forEach(confirmDeletion)
            DataManager.cleanSortedLists()
        }, function () {
            objects.forEach(function (object, index) { revertDeletion(object, index === objects.length - 1) })
            if (objects.length === 1)
                objectUpdater.selectAfterUndo(objects[0].ID)
        })
    }

    function completeTask(task) {
        objectUpdater.completeTask(task)
    }

    function completeProject(project) {
        objectUpdater.completeProject(project)
    }
}

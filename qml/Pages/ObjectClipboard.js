// Cut, copy and the common part of paste for tasks, projects, folders and contexts. The pages
// decide where a paste goes; this keeps what every one of them does the same way.

function kindOf(object) {
    if (object.FOLDER == true)
        return "folder"
    if (object.PERIOD !== undefined)
        return "task"
    if (object.CONTEXT !== undefined || object.FOLDER == false)
        return "project"
    return "context"
}

// The lists' special rows, the no-context row and the one-step actions, stay where they are.
function canMove(object) {
    return object.NAME !== undefined && object.ID !== "" && object.ID !== PredefinedDataHelper.oneStepActionsId
}

// An occurrence of a repeating task may be dragged, which moves its task, but not cut or copied.
function canHold(object) {
    return canMove(object) && object.REPEATED === undefined
}

function copyObject(object) {
    if (canHold(object))
        Clipboard.object = object
}

// A cut removes the object at once, without an undo offer: the paste brings it back.
function cutObject(object) {
    if (!canHold(object))
        return
    Clipboard.setCutObject(object)
    switch (kindOf(object)) {
    case "task":
        TaskHandler.markTaskAsDeleted(object)
        TaskHandler.confirmTaskUpdate(object)
        break
    case "context":
        ContextHandler.markContextAsDeleted(object)
        ContextHandler.confirmContextUpdate(object)
        break
    default:
        ProjectHandler.markProjectAsDeleted(object)
        ProjectHandler.confirmProjectUpdate(object)
    }
}

function hasObject() {
    return Clipboard.object.NAME !== undefined
}

function isCut() {
    var extra = Clipboard.extraInfo
    return extra.obj_id !== undefined && extra.state !== undefined
}

// A copy of the held object; a cut one gets its old id and state back.
function heldObject() {
    var object = JSON.parse(JSON.stringify(Clipboard.object))
    if (isCut()) {
        object.ID = Clipboard.extraInfo.obj_id
        object.STATE = Clipboard.extraInfo.state
    }
    // Dates do not survive the JSON round trip as dates.
    ["START", "DUE"].forEach(function (key) {
        if (Clipboard.object[key] !== undefined)
            object[key] = Clipboard.object[key]
    })
    return object
}

function showPasteError(text) {
    popupHelper.showMessageDialog(qsTr("Paste error"), text)
}

// A cut task is written back under its old id and the clipboard empties; a copied one is created
// anew and stays for another paste.
function pasteTask(task) {
    if (isCut()) {
        TaskHandler.updateTask(task)
        Clipboard.object = {}
        return
    }
    TaskHandler.createTask(task)
}

function pasteTaskWith(changes, wrongKindText) {
    if (!Clipboard.containsTask) {
        showPasteError(wrongKindText)
        return
    }
    var task = heldObject()
    for (var key in changes)
        task[key] = changes[key]
    pasteTask(task)
}

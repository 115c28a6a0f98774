import QtQuick 2.15

// A project, new in a folder or a context, or made from a task that it then replaces.
ObjectInfoPopup {
    property string parentFolderId
    property string contextId
    property var dueDateTime
    property var taskToConvert

    objectName: "ProjectInfoPopup"
    kind: "project"
    newTitle: qsTr("New project")
    emptyNameText: qsTr("Please input project name")
    initialValues: taskToConvert ? { "NAME": taskToConvert.NAME, "MEMO": taskToConvert.MEMO, "PARENT": parentFolderId,
                                     "CONTEXT": taskToConvert.CONTEXT, "START": taskToConvert.START,
                                     "DUE": taskToConvert.DUE, "FOLDER": false }
                                 : { "PARENT": parentFolderId, "CONTEXT": contextId, "DUE": dueDateTime, "FOLDER": false }
    createObjectFunc: function (project) { return ProjectHandler.createProject(project) }
    updateObjectFunc: function (project) { return ProjectHandler.updateProject(project) }
    lastCreatedIdFunc: function () { return ProjectHandler.lastCreatedProjectId() }
    inFavoritesFunc: function (project) { return ProjectHandler.inFavorites(project) }
    addToFavoritesFunc: function (project) { ProjectHandler.addToFavorites(project) }
    removeFromFavoritesFunc: function (project) { ProjectHandler.removeFromFavorites(project) }
    onSaved: {
        if (!taskToConvert)
            return
        TaskHandler.markTaskAsDeleted(taskToConvert)
        TaskHandler.confirmTaskUpdate(taskToConvert)
    }
}

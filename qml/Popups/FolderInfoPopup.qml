import QtQuick 2.15

// A folder, new at the root or inside another folder.
ObjectInfoPopup {
    property string parentFolderId

    objectName: "FolderInfoPopup"
    kind: "folder"
    newTitle: qsTr("New folder")
    emptyNameText: qsTr("Please input folder name")
    initialValues: ({ "PARENT": parentFolderId, "FOLDER": true })
    createObjectFunc: function (folder) { return ProjectHandler.createProject(folder) }
    updateObjectFunc: function (folder) { return ProjectHandler.updateProject(folder) }
    lastCreatedIdFunc: function () { return ProjectHandler.lastCreatedProjectId() }
}

import QtQuick 2.15
import "../Components"

// Folders hold folders and projects, projects hold tasks.
TreeViewPage {
    id: page

    property string currentFolderId
    property string currentProjectId
    // A cut or copied folder or project, waiting for Paste on a folder or the root.
    property var heldObject: null
    property bool heldObjectIsCut: false

    objectName: "ProjectsPage"
    sectionHeader: qsTr("Projects")
    rootTitle: qsTr("Projects")
    emptyListText: qsTr("No folders or projects here yet.")
    treeModelType: "PROJECT"
    treeModel: ProjectHandler.getProjectTreeModel()

    function listModelFor(object) {
        if (!object) {
            currentFolderId = ""
            currentProjectId = ""
            return ProjectHandler.getRootObjects()
        }
        if (object.FOLDER == true) {
            currentFolderId = object.ID
            currentProjectId = ""
            return ProjectHandler.getNestedObjects(object.ID)
        }
        currentProjectId = object.ID
        Settings.recentProjects = Helper.handleRecentProjectList(Settings.recentProjects, object)
        return TaskHandler.getProjectTasks(object.ID)
    }

    function objectIcon(object) {
        return object.FOLDER == true ? "projects.svg" : "norvel_box.svg"
    }

    function canEnter(object) {
        return object.PERIOD === undefined
    }

    // Tree rows carry the tree's own keys; writes start from the stored record.
    function storedObject(object) {
        return ProjectHandler.getProjectById(object.ID)
    }

    function isFolder(object) {
        return object !== null && object.FOLDER == true
    }

    function openContextMenu(object) {
        menu.object = object
        menu.popup()
    }

    function addFolder(parentId) {
        popupHelper.showFolderPopup(null, parentId)
    }

    function addProject(parentId) {
        popupHelper.showProjectPopup(null, parentId)
    }

    // The task editor opens with the project set, so that the new task gets its dates there too.
    function addTask(project) {
        popupHelper.showTaskPopupWithProject(project.ID)
    }

    function edit(object) {
        if (isFolder(object))
            popupHelper.showFolderPopup(storedObject(object))
        else
            popupHelper.showProjectPopup(storedObject(object))
    }

    function deleteObject(object) {
        var folder = isFolder(object)
        popupHelper.showQuestionDialog(folder ? qsTr("Delete Folder") : qsTr("Delete Project"),
                                        folder ? qsTr("Are you sure you want to delete this folder and all of its content?")
                                               : qsTr("Are you sure you want to delete this project and all of its tasks?"),
                                        function () {
                                            treeGoBack()
                                            markDeleted(storedObject(object))
                                        })
    }

    // With the status bar's undo offer the deletion waits for it; without, it is kept at once.
    function markDeleted(object) {
        var undoable = typeof popupHelper.showUndoPopup === "function"
        if (undoable)
            popupHelper.showUndoPopup([object])
        if (ProjectHandler.markProjectAsDeleted(object) && !undoable)
            ProjectHandler.confirmProjectUpdate(object)
    }

    function toggleCompleted(object) {
        var project = storedObject(object)
        if (project.STATE === COMPLETED_OBJECT_STATE) {
            ProjectHandler.restoreProject(project)
        } else if (typeof objectUpdater !== "undefined" && typeof objectUpdater.completeProject === "function") {
            objectUpdater.completeProject(project)
        } else if (ProjectHandler.markProjectAsCompleted(project)) {
            ProjectHandler.confirmProjectUpdate(project)
        }
        treeGoBack()
    }

    function hold(object, cut) {
        heldObject = object
        heldObjectIsCut = cut
    }

    // A cut object moves under the target; a copied one is cloned there. Nothing goes into itself.
    function pasteInto(targetId) {
        var object = heldObject
        if (!object || isSelfOrDescendant(object, targetId))
            return
        var moved = storedObject(object)
        moved.PARENT = targetId
        if (heldObjectIsCut) {
            ProjectHandler.updateProject(moved)
            heldObject = null
        } else if (!(isFolder(object) ? ProjectHandler.cloneFolder(moved) : ProjectHandler.cloneProject(moved))) {
            Logger.error(isFolder(object) ? "Unable to clone a folder!" : "Unable to clone a project!")
        }
    }

    Connections {
        target: ProjectHandler
        function onProjectAdded() { page.updateAll() }
        function onProjectUpdated() { page.updateAll() }
    }

    Connections {
        target: TaskHandler
        function onTaskAdded() { page.updateLoadedListPages() }
        function onTaskUpdated() { page.updateLoadedListPages() }
    }

    Connections {
        target: DataManager
        function onSyncActiveChanged(active) {
            if (!active)
                page.updateAll()
        }
    }

    NvMenu {
        id: menu
        objectName: "projectsMenu"

        property var object: null
        readonly property bool onFolder: page.isFolder(object)
        readonly property bool onProject: object !== null && !onFolder
        readonly property bool canNest: page.objectLevel(object) < page.maxTreeLevel

        NvMenuItem {
            objectName: "projectMenuAddFolder"
            label: menu.onFolder ? qsTr("Add nested folder") : qsTr("Add Folder")
            readonly property bool shown: !menu.onProject && menu.canNest
            visible: shown
            height: shown ? implicitHeight : 0
            onActivated: page.addFolder(menu.onFolder ? menu.object.ID : "")
        }
        NvMenuItem {
            objectName: "projectMenuAddProject"
            label: menu.onFolder ? qsTr("Add a project to this folder") : qsTr("Add Project")
            readonly property bool shown: !menu.onProject
            visible: shown
            height: shown ? implicitHeight : 0
            onActivated: page.addProject(menu.onFolder ? menu.object.ID : "")
        }
        NvMenuItem {
            objectName: "projectMenuCompleteProject"
            label: menu.object && menu.object.STATE === COMPLETED_OBJECT_STATE ? qsTr("Mark as not complete")
                                                                              : qsTr("Mark as completed")
            readonly property bool shown: menu.onProject
            visible: shown
            height: shown ? implicitHeight : 0
            onActivated: page.toggleCompleted(menu.object)
        }
        NvMenuItem {
            objectName: "projectMenuAddTask"
            label: qsTr("Add a task to this project")
            readonly property bool shown: menu.onProject
            visible: shown
            height: shown ? implicitHeight : 0
            onActivated: page.addTask(menu.object)
        }
        NvMenuItem {
            objectName: "projectMenuEdit"
            label: menu.onFolder ? qsTr("Edit Folder") : qsTr("Edit Project")
            readonly property bool shown: menu.object !== null
            visible: shown
            height: shown ? implicitHeight : 0
            onActivated: page.edit(menu.object)
        }
        NvMenuItem {
            objectName: "projectMenuDelete"
            label: menu.onFolder ? qsTr("Delete Folder") : qsTr("Delete Project")
            readonly property bool shown: menu.object !== null
            visible: shown
            height: shown ? implicitHeight : 0
            onActivated: page.deleteObject(menu.object)
        }
        NvMenuItem {
            objectName: "projectMenuCut"
            label: qsTr("Cut")
            readonly property bool shown: menu.object !== null
            visible: shown
            height: shown ? implicitHeight : 0
            onActivated: page.hold(menu.object, true)
        }
        NvMenuItem {
            objectName: "projectMenuCopy"
            label: qsTr("Copy")
            readonly property bool shown: menu.object !== null
            visible: shown
            height: shown ? implicitHeight : 0
            onActivated: page.hold(menu.object, false)
        }
        NvMenuItem {
            objectName: "projectMenuPaste"
            label: qsTr("Paste")
            visible: !menu.onProject
            available: page.heldObject !== null
            height: visible ? implicitHeight : 0
            onActivated: page.pasteInto(menu.onFolder ? menu.object.ID : "")
        }
    }
}

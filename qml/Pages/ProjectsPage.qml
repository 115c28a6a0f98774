import QtQuick 2.15
import com.kelmora.helpers 1.0
import com.kelmora.common 1.0
import "../Components"
import "ObjectClipboard.js" as ObjectClipboard

// Folders hold folders and projects, projects hold tasks.
TreeViewPage {
    id: page

    property string currentFolderId
    property string currentProjectId

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

    function listsOnlyTasks(object) {
        return object !== null && !isFolder(object)
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

    function isOneStepActions(object) {
        return object !== null && object.ID === PredefinedDataHelper.oneStepActionsId
    }

    function sortedListOf(object) {
        if (!object)
            return ["root_projects", SortingEnums.ListTypeFolder]
        if (isOneStepActions(object))
            return ["1_step_actions", SortingEnums.ListTypeProject]
        return [object.ID, isFolder(object) ? SortingEnums.ListTypeFolder : SortingEnums.ListTypeProject]
    }

    function pasteIntoList(object) {
        if (object && !isFolder(object))
            ObjectClipboard.pasteTaskWith({ "PARENT": object.ID }, qsTr("One can paste only tasks into this list."))
        else
            pasteIntoFolder(object ? object.ID : "")
    }

    // A cut folder or project moves under the target with what it held; a copied one is cloned there.
    // A folder never goes into itself or below itself.
    function pasteIntoFolder(targetId) {
        if (!Clipboard.containsFolder && !Clipboard.containsProject) {
            ObjectClipboard.showPasteError(qsTr("One can paste only folders or projects into this list."))
            return
        }
        var object = ObjectClipboard.heldObject()
        var folder = Clipboard.containsFolder
        if (folder && isSelfOrDescendant(object, targetId))
            return
        if (ObjectClipboard.isCut()) {
            var children = Clipboard.extraInfo.children
            if (folder)
                ProjectHandler.moveFolder(object, targetId, children)
            else
                ProjectHandler.moveProject(object, targetId, children)
            Clipboard.object = {}
            return
        }
        object.PARENT = targetId
        if (!(folder ? ProjectHandler.cloneFolder(object) : ProjectHandler.cloneProject(object)))
            Logger.error(folder ? "Unable to clone a folder!" : "Unable to clone a project!")
    }

    // Folders take folders and projects, and open for a task to reach the projects inside; projects
    // take tasks. Nothing goes where it already is, nor a folder below itself.
    function dropKeysFor(object) {
        if (isOneStepActions(object))
            return []
        return isFolder(object) ? ["folder", "project", "task"] : ["task"]
    }

    function acceptsTreeDrop(object, source) {
        var dropped = source.itemObject
        if (source.dragKey === "folder" && (dropped.ID === object.ID || dropped.PARENT === object.ID
                                            || isSelfOrDescendant(dropped, object.ID)))
            return false
        if (source.dragKey === "task" && dropped.PARENT === object.ID)
            return false
        if (isFolder(object) && source.dragKey !== "folder")
            treeModel.openItem(object.ID)
        return true
    }

    function handleTreeDrop(object, source) {
        if (source.dragKey === "task" && !isFolder(object))
            source.changeParent(object.ID)
        else if (source.dragKey !== "task" && isFolder(object))
            source.changeParentFolder(object.ID)
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
            onActivated: page.cutTreeObject(page.storedObject(menu.object))
        }
        NvMenuItem {
            objectName: "projectMenuCopy"
            label: qsTr("Copy")
            readonly property bool shown: menu.object !== null
            visible: shown
            height: shown ? implicitHeight : 0
            onActivated: ObjectClipboard.copyObject(page.storedObject(menu.object))
        }
        NvMenuItem {
            objectName: "projectMenuPaste"
            label: qsTr("Paste")
            visible: menu.object === null
            available: Clipboard.object.NAME !== undefined
            height: visible ? implicitHeight : 0
            onActivated: page.pasteIntoFolder("")
        }
    }
}

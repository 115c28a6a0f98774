import QtQuick 2.15
import "../Components"

// Contexts hold contexts; a context's list shows its nested contexts, its projects and its tasks.
// The tree's last row gathers what has no context.
TreeViewPage {
    id: page

    // A cut or copied context, waiting for Paste on a context or the root.
    property var heldObject: null
    property bool heldObjectIsCut: false

    objectName: "ContextsPage"
    sectionHeader: qsTr("Contexts")
    rootTitle: qsTr("Contexts")
    emptyListText: qsTr("No contexts here yet.")
    treeModelType: "CONTEXT"
    treeModel: ContextHandler.getContextTreeModel("")

    function isNoContext(object) {
        return object !== null && object.ID === ""
    }

    function listModelFor(object) {
        if (!object)
            return ContextHandler.getRootContextListModel()
        if (isNoContext(object))
            return TaskHandler.getNoContextTasks()
        return ContextHandler.getContextChildren(object.ID)
    }

    function objectIcon(object) {
        return "contexts.svg"
    }

    // Only contexts are walked into from a list.
    function canEnter(object) {
        return object.PERIOD === undefined && object.CONTEXT === undefined
    }

    function storedObject(object) {
        return ContextHandler.getContextById(object.ID)
    }

    function openContextMenu(object) {
        menu.object = object
        menu.popup()
    }

    function addContext(parentId) {
        popupHelper.showContextPopup(null, parentId)
    }

    function edit(object) {
        popupHelper.showContextPopup(storedObject(object))
    }

    function deleteObject(object) {
        popupHelper.showQuestionDialog(qsTr("Delete Context"), qsTr("Are you sure you want to delete this context?"),
                                       function () {
                                           treeGoBack()
                                           markDeleted(storedObject(object))
                                       })
    }

    // With the status bar's undo offer the deletion waits for it; without, it is kept at once.
    function markDeleted(context) {
        var undoable = typeof popupHelper.showUndoPopup === "function"
        if (undoable)
            popupHelper.showUndoPopup([context])
        if (ContextHandler.markContextAsDeleted(context) && !undoable)
            ContextHandler.confirmContextUpdate(context)
    }

    function hold(object, cut) {
        heldObject = object
        heldObjectIsCut = cut
    }

    // A cut context moves under the target; a copied one is cloned there. Nothing goes into itself.
    function pasteInto(targetId) {
        var object = heldObject
        if (!object || isSelfOrDescendant(object, targetId))
            return
        var moved = storedObject(object)
        moved.PARENT = targetId
        if (heldObjectIsCut) {
            ContextHandler.updateContext(moved)
            heldObject = null
        } else if (!ContextHandler.cloneContext(moved)) {
            Logger.error("Unable to clone a context!")
        }
    }

    Connections {
        target: ContextHandler
        function onContextAdded() { page.updateAll() }
        function onContextUpdated() { page.updateAll() }
    }

    Connections {
        target: TaskHandler
        function onTaskAdded() { page.updateLoadedListPages() }
        function onTaskUpdated() { page.updateLoadedListPages() }
    }

    Connections {
        target: ProjectHandler
        function onProjectAdded() { page.updateLoadedListPages() }
        function onProjectUpdated() { page.updateLoadedListPages() }
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
        objectName: "contextsMenu"

        property var object: null
        readonly property bool onContext: object !== null && !page.isNoContext(object)

        NvMenuItem {
            objectName: "contextMenuAddContext"
            label: menu.onContext ? qsTr("Add nested context") : qsTr("Add Context")
            readonly property bool shown: page.objectLevel(menu.object) < page.maxTreeLevel && !page.isNoContext(menu.object)
            visible: shown
            height: shown ? implicitHeight : 0
            onActivated: page.addContext(menu.onContext ? menu.object.ID : "")
        }
        NvMenuItem {
            objectName: "contextMenuEdit"
            label: qsTr("Edit Context")
            readonly property bool shown: menu.onContext
            visible: shown
            height: shown ? implicitHeight : 0
            onActivated: page.edit(menu.object)
        }
        NvMenuItem {
            objectName: "contextMenuDelete"
            label: qsTr("Delete Context")
            readonly property bool shown: menu.onContext
            visible: shown
            height: shown ? implicitHeight : 0
            onActivated: page.deleteObject(menu.object)
        }
        NvMenuItem {
            objectName: "contextMenuCut"
            label: qsTr("Cut")
            readonly property bool shown: menu.onContext
            visible: shown
            height: shown ? implicitHeight : 0
            onActivated: page.hold(menu.object, true)
        }
        NvMenuItem {
            objectName: "contextMenuCopy"
            label: qsTr("Copy")
            readonly property bool shown: menu.onContext
            visible: shown
            height: shown ? implicitHeight : 0
            onActivated: page.hold(menu.object, false)
        }
        NvMenuItem {
            objectName: "contextMenuPaste"
            label: qsTr("Paste")
            visible: !page.isNoContext(menu.object)
            available: page.heldObject !== null
            height: visible ? implicitHeight : 0
            onActivated: page.pasteInto(menu.onContext ? menu.object.ID : "")
        }
    }
}

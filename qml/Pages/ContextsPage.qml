import QtQuick 2.15
import com.kelmora.helpers 1.0
import com.kelmora.common 1.0
import "../Components"
import "ObjectClipboard.js" as ObjectClipboard

// Contexts hold contexts; a context's list shows its nested contexts, its projects and its tasks.
// The tree's last row gathers what has no context.
TreeViewPage {
    id: page

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

    function listsOnlyTasks(object) {
        return isNoContext(object)
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

    function sortedListOf(object) {
        if (!object)
            return ["root_contexts", SortingEnums.ListTypeContext]
        return [isNoContext(object) ? "no_context" : object.ID, SortingEnums.ListTypeContext]
    }

    // A task goes into a context's list or the no-context list, a context anywhere but the latter.
    function pasteIntoList(object) {
        if (Clipboard.containsTask && object) {
            ObjectClipboard.pasteTaskWith({ "CONTEXT": object.ID }, "")
        } else if (Clipboard.containsContext && !isNoContext(object)) {
            pasteContext(object ? object.ID : "")
        } else {
            ObjectClipboard.showPasteError(qsTr("One can paste only tasks or contexts into this list."))
        }
    }

    // A cut context moves under the target with its nested contexts and tasks; a copied one is cloned.
    function pasteContext(targetId) {
        var object = ObjectClipboard.heldObject()
        if (isSelfOrDescendant(object, targetId))
            return
        if (ObjectClipboard.isCut()) {
            ContextHandler.moveContext(object, targetId, Clipboard.extraInfo.children)
            Clipboard.object = {}
            return
        }
        object.PARENT = targetId
        if (!ContextHandler.cloneContext(object))
            Logger.error("Unable to clone a context!")
    }

    // A context takes contexts, projects and tasks; the no-context row takes projects and tasks,
    // whose context it empties. Nothing goes where it already is, nor a context below itself.
    function dropKeysFor(object) {
        return isNoContext(object) ? ["task", "project"] : ["context", "task", "project"]
    }

    function acceptsTreeDrop(object, source) {
        var dropped = source.itemObject
        if (source.dragKey === "context")
            return dropped.ID !== object.ID && dropped.PARENT !== object.ID && !isSelfOrDescendant(dropped, object.ID)
        return dropped.CONTEXT !== object.ID
    }

    function handleTreeDrop(object, source) {
        if (source.dragKey === "context")
            source.changeParent(object.ID)
        else
            source.changeContext(object.ID)
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
            onActivated: page.cutTreeObject(page.storedObject(menu.object))
        }
        NvMenuItem {
            objectName: "contextMenuCopy"
            label: qsTr("Copy")
            readonly property bool shown: menu.onContext
            visible: shown
            height: shown ? implicitHeight : 0
            onActivated: ObjectClipboard.copyObject(page.storedObject(menu.object))
        }
        NvMenuItem {
            objectName: "contextMenuPaste"
            label: qsTr("Paste")
            visible: !page.isNoContext(menu.object)
            available: Clipboard.containsContext && Clipboard.object.NAME !== undefined
            height: visible ? implicitHeight : 0
            onActivated: page.pasteContext(menu.onContext ? menu.object.ID : "")
        }
    }
}

import QtQuick 2.15
import QtQuick.Controls 2.15
import com.kelmora.helpers 1.0
import "../Components"
import "ObjectClipboard.js" as ObjectClipboard

// A tree of folders and projects, or of contexts, on the left; on the right a stack of list pages,
// one for each level walked. History entries are tree items, null for the root, and strings for a
// return to another page.
HistoryPage {
    id: page

    readonly property int maxTreeLevel: 8
    property var treeModel: null
    property string treeModelType
    property var treeViewCurrentItem: null
    property var treeViewCurrentDelegateItem: null
    property bool treeViewIsHidden: false
    // Only the user's showing and hiding animates; the first layout of the page does not.
    property bool treeWidthAnimated: false
    property int currentTreeLevel: 0
    readonly property bool hasSelectedTreeItem: treeViewCurrentItem !== null
    readonly property var currentListPage: listStack.currentItem
    readonly property alias navigationElement: treePane
    // While walking back the list stack pops, so that the selection does not push a list.
    property bool selectingFromHistory: false
    property string rootTitle
    readonly property var draggedKinds: ["task", "project", "folder", "context"]
    property string emptyListText

    signal itemSelectionChanged()

    // Subclasses answer the list model of an object, or of the root for null.
    function listModelFor(object) {
        return null
    }

    // Subclasses fill the context menu for an object, or for the empty tree with null.
    function openContextMenu(object) {
    }

    function objectIcon(object) {
        return "projects.svg"
    }

    function canEnter(object) {
        return true
    }

    // Subclasses name the kinds a tree row takes from a list, and judge and carry out a drop.
    function dropKeysFor(object) {
        return []
    }

    function acceptsTreeDrop(object, source) {
        return false
    }

    function handleTreeDrop(object, source) {
    }

    // Subclasses paste the clipboard into the list of an object, or of the root for null.
    function pasteIntoList(object) {
    }

    // Subclasses answer whether the list of an object holds tasks alone.
    function listsOnlyTasks(object) {
        return false
    }

    // Subclasses answer [list id, list type] of the sorted list that a list page shows.
    function sortedListOf(object) {
        return ["", 0]
    }

    function showSortingPopup(listPage) {
        var list = sortedListOf(listPage.listObject)
        var popup = FunctionHelper.callIfProvided(popupHelper, "showSortingPopup", list)
        if (!popup)
            return
        popup.manualModeRequested.connect(listPage.showManualSortingAnimation)
        popup.sortingTypeChanged.connect(listPage.model.sort)
    }

    // A cut from the tree leaves the removed item's level first.
    function cutTreeObject(object) {
        treeGoBack()
        ObjectClipboard.cutObject(object)
    }

    function dropOnTree(object, drop) {
        handleTreeDrop(object, drop.source)
        drop.accept()
        resortLoadedListPages()
    }

    function scrollTree(step) {
        var bottom = Math.max(0, treeView.contentHeight - treeView.height)
        treeView.contentY = Math.max(0, Math.min(bottom, treeView.contentY + step))
    }

    function objectLevel(object) {
        return object && object.LEVEL !== undefined ? object.LEVEL + 1 : 0
    }

    function indexOfId(id) {
        for (var row = 0; row < treeView.count; ++row) {
            var object = treeModel.getObjectByIndex(row)
            if (object.ID === id)
                return row
        }
        return -1
    }

    function ancestorsOf(object) {
        var chain = []
        var parentId = object.PARENT
        while (parentId) {
            var parent = treeModel.getObjectById(parentId)
            if (!parent.ID)
                break
            chain.unshift(parent)
            parentId = parent.PARENT
        }
        return chain
    }

    function selectTreeItem(object) {
        if (object === "nocontext")
            object = treeModel.getObjectByIndex(treeView.count - 1)
        if (!object || object.ID === undefined) {
            setCurrentItem(null)
            return
        }
        ancestorsOf(treeModel.getObjectById(object.ID) || object).forEach(function (ancestor) {
            treeModel.openItem(ancestor.ID)
        })
        setCurrentItem(treeModel.getObjectById(object.ID).ID !== undefined ? treeModel.getObjectById(object.ID)
                                                                             : object)
    }

    function selectItemById(id) {
        selectTreeItem(treeModel.getObjectById(id))
    }

    function setCurrentItem(object) {
        treeViewCurrentItem = object
        treeView.currentIndex = object ? indexOfId(object.ID) : -1
        itemSelectionChanged()
    }

    // A selection by the user goes into the history.
    function selectByUser(object) {
        pushToHistoryStack(object)
        selectTreeItem(object)
    }

    function clearTreeItemsSelection() {
        treeViewCurrentItem = null
        treeView.currentIndex = -1
    }

    function forceUpdateCurrentItem() {
        if (!treeViewCurrentItem)
            return
        var fresh = treeModel.getObjectById(treeViewCurrentItem.ID)
        if (fresh.ID === undefined)
            resetSelection()
        else
            treeViewCurrentItem = fresh
    }

    function treeGoBack() {
        handleBackAction()
    }

    function clearHistoryStack() {
        clearStack()
        pushToHistoryStack(null)
    }

    // The stack does not own pages it was handed, so a popped one is destroyed here.
    function popListPage() {
        var listPage = listStack.currentItem
        if (listStack.depth > 1)
            listStack.pop(StackView.Immediate)
        else
            listStack.clear(StackView.Immediate)
        if (listPage)
            listPage.destroy()
    }

    function clearListPages() {
        while (listStack.depth > 0)
            popListPage()
    }

    function resetSelection() {
        clearListPages()
        clearHistoryStack()
        setCurrentItem(null)
    }

    function updateLoadedListPages() {
        for (var i = 0; i < listStack.depth; ++i)
            listStack.get(i).model.update()
    }

    function resortLoadedListPages() {
        for (var i = 0; i < listStack.depth; ++i)
            listStack.get(i).model.sort()
    }

    function pushListPage(listPage) {
        listStack.push(listPage, {}, StackView.Immediate)
    }

    function handleItemSelection() {
        currentTreeLevel = objectLevel(treeViewCurrentItem)
        if (selectingFromHistory) {
            if (listStack.depth > 1)
                popListPage()
            selectingFromHistory = false
            if (listStack.depth > 0)
                return
        }
        if (!treeViewCurrentItem)
            Logger.info(">>>>Current tree view item changed to ROOT.")
        var model = listModelFor(treeViewCurrentItem)
        if (!model)
            return
        pushListPage(listPageComponent.createObject(null, {
            "model": model,
            "listObject": treeViewCurrentItem,
            "treeLevel": currentTreeLevel,
            "tasksOnly": listsOnlyTasks(treeViewCurrentItem),
            "title": treeViewCurrentItem ? Helper.objectDisplayName(treeViewCurrentItem) : page.rootTitle,
            "emptyText": page.emptyListText
        }))
    }

    function handleBackAction() {
        var item = popFromBackHistoryStack()
        if (item === undefined)
            return
        if (typeof item === "string") {
            handleStringHistoryItem(item)
            return
        }
        selectingFromHistory = true
        selectTreeItem(item)
    }

    function handleForwardAction() {
        var item = popFromForwardHistoryStack()
        if (item !== undefined)
            selectTreeItem(item)
    }

    // "dppage" returns to the daily plan on its date; the other pages open on their task.
    function handleStringHistoryItem(item) {
        if (item.indexOf("dppage") === 0) {
            var parts = item.split("_")
            sidePanel.openDailyPlanPage(parts.length > 2 ? TaskHandler.getTaskById(parts[2]) : null, true,
                                        new Date(parseInt(parts[1])))
        } else if (item.indexOf("nbpage") === 0) {
            sidePanel.openNorvelBoxPage(TaskHandler.getTaskById(item.split("_")[1]), true)
        }
    }

    function handleHideNavigationAction() {
        treeWidthAnimated = true
        treeViewIsHidden = !treeViewIsHidden
    }

    function hideTreeView() {
        treeViewIsHidden = true
    }

    function updateAll() {
        treeModel.update()
        forceUpdateCurrentItem()
        updateLoadedListPages()
    }

    // A folder or context may not go into itself or anything below it.
    function isSelfOrDescendant(object, targetId) {
        var id = targetId
        while (id) {
            if (id === object.ID)
                return true
            var parent = treeModel.getObjectById(id)
            id = parent.ID !== undefined ? parent.PARENT : ""
        }
        return false
    }

    onItemSelectionChanged: handleItemSelection()
    onVisibleChanged: {
        if (!visible)
            removeStringObjects()
    }
    Component.onCompleted: {
        pushToHistoryStack(null)
        setCurrentItem(null)
    }
    Component.onDestruction: {
        if (treeModel)
            treeModel.requestDeletion()
    }

    Component {
        id: listPageComponent
        ObjectListPage {
            onObjectDoubleClicked: {
                if (page.canEnter(object))
                    page.selectByUser(object)
            }
            onPasteActionClicked: page.pasteIntoList(listObject)
            onSortActionClicked: page.showSortingPopup(this)
            // The tree shows the new order of a level of folders or contexts too.
            onItemMovedByUser: page.treeModel.sort()
        }
    }

    Rectangle {
        anchors.fill: parent
        color: appStyle.mainWindow.backgroundColor
    }

    Item {
        id: treePane
        objectName: "treePane"
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        width: page.treeViewIsHidden ? 0 : Math.max(page.width * 0.16, page.width * 0.26)
        clip: true

        Behavior on width {
            enabled: page.treeWidthAnimated
            NumberAnimation { duration: 300 }
        }

        Rectangle {
            anchors.fill: parent
            color: appStyle.components.sidePanel.backgroundColor
        }

        ListView {
            id: treeView
            objectName: "treeView"
            anchors.fill: parent
            anchors.bottomMargin: treeFooter.height
            clip: true
            model: page.treeModel
            currentIndex: -1
            boundsBehavior: Flickable.StopAtBounds
            ScrollBar.vertical: ScrollBar {}

            delegate: TreeRowDelegate {
                width: treeView.width
                object: treeItemRole
                hasChildren: hasChildrenRole
                opened: isItemOpenedRole
                selected: page.treeViewCurrentItem !== null && page.treeViewCurrentItem.ID === treeItemRole.ID
                iconSource: page.objectIcon(treeItemRole)
                onClicked: page.selectByUser(object)
                onToggled: opened ? page.treeModel.closeItem(object.ID) : page.treeModel.openItem(object.ID)
                onMenuRequested: page.openContextMenu(object)
                dropKeys: page.dropKeysFor(treeItemRole)
                onDragEntered: drag.accepted = page.acceptsTreeDrop(object, drag.source)
                onDropped: page.dropOnTree(object, drop)
            }

            MouseArea {
                anchors.fill: parent
                z: -1
                acceptedButtons: Qt.RightButton
                onClicked: page.openContextMenu(null)
            }
        }

        // A row dragged to the tree's edge scrolls it, 3 pixels every 10 ms.
        DropArea {
            id: topEdge
            objectName: "treeTopEdge"
            width: treeView.width
            height: 10
            keys: page.draggedKinds
        }

        DropArea {
            id: bottomEdge
            objectName: "treeBottomEdge"
            y: treeView.height - height
            width: treeView.width
            height: 10
            keys: page.draggedKinds
        }

        Timer {
            interval: 10
            repeat: true
            running: topEdge.containsDrag || bottomEdge.containsDrag
            onTriggered: page.scrollTree(topEdge.containsDrag ? -3 : 3)
        }

        Rectangle {
            id: treeFooter
            anchors.bottom: parent.bottom
            width: parent.width
            height: 34
            color: appStyle.pages.sectionHeaderBackground

            ToolBarButton {
                objectName: "treeMenuButton"
                anchors.left: parent.left
                anchors.leftMargin: 6
                anchors.verticalCenter: parent.verticalCenter
                iconSource: "add.svg"
                ToolTip.text: qsTr("Add")
                onClicked: page.openContextMenu(null)
            }
        }

        Rectangle {
            anchors.right: parent.right
            width: 1
            height: parent.height
            color: appStyle.pages.splitterColor
        }
    }

    StackView {
        id: listStack
        objectName: "listStack"
        anchors.left: treePane.right
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        clip: true
    }
}

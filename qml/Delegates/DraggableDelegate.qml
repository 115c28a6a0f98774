import QtQuick 2.15
import com.kelmora.helpers 1.0

// The base of every row's content. A press held for a moment lifts the row above the list; it
// follows the pointer until released over another row, where the list takes the new order.
Item {
    id: delegate

    property Item listDelegate: null
    readonly property var listPage: listDelegate ? listDelegate.listPage : null
    readonly property var itemObject: listDelegate ? listDelegate.itemObject : ({})
    readonly property int delegateIndex: listDelegate ? listDelegate.delegateIndex : -1
    readonly property bool isSelected: listDelegate ? listDelegate.selected : false
    readonly property bool isCurrent: listDelegate ? listDelegate.current : false
    readonly property bool hovered: draggable.hovered
    readonly property alias draggableItem: draggable

    property string dragKey: "object"
    property Component contextMenu: null
    property bool contextMenuEnabled: contextMenu !== null
    property string analyticsCategory
    property int currentItemIndex: -1
    property bool dragEnabled: listPage ? listPage.dragEnabled : false
    property bool dragInEnabled: false
    property bool dropDisabled: false
    property real grabOffsetX: 0
    property real grabOffsetY: 0
    property real dragXHotSpot: grabOffsetX
    property real dragX: 0
    property real dragY: 0

    signal itemMoved()

    function sendEvent(action) {
        FunctionHelper.callIfProvided(AnalyticsManager, "sendEvent", [analyticsCategory, action])
    }

    // The row floats over the whole page content, so that it can reach the tree or a calendar day
    // beside its list.
    function startDrag() {
        if (!listPage || !dragEnabled)
            return
        currentItemIndex = delegateIndex
        grabOffsetX = draggable.pressX
        grabOffsetY = draggable.pressY
        listPage.beginDrag()
        var topLeft = mapToItem(mainWindow.pageContent, 0, 0)
        parent = mainWindow.pageContent
        x = topLeft.x
        y = topLeft.y
        z = 10
        opacity = 0.85
        draggable.dragging = true
    }

    function followPointer(mouse) {
        if (!draggable.dragging)
            return
        var point = draggable.mapToItem(mainWindow.pageContent, mouse.x, mouse.y)
        x = point.x - grabOffsetX
        y = point.y - grabOffsetY
        var onPage = draggable.mapToItem(listPage, mouse.x, mouse.y)
        dragX = onPage.x
        dragY = onPage.y
        listPage.listItemDragCoorChanged(dragX, dragY)
    }

    function finishDrag() {
        if (!draggable.dragging)
            return
        var accepted = Drag.drop() !== Qt.IgnoreAction
        draggable.dragging = false
        opacity = 1
        listDelegate.takeBackContent()
        var page = listPage
        // A row of the list ends the drag itself; the tree and the calendar leave it to us.
        if (accepted)
            FunctionHelper.delayFunctionCall(10, function () { page.dragActive = false })
        else
            page.dragActive = false
    }

    // Derived rows narrow these two.
    function handleDragEntered(source) {
        return !isCompleted(source.itemObject)
    }

    function handleDrop(source, dropInside) {
        __handleDrop(source, dropInside)
    }

    function __handleDrop(source, dropInside) {
        if (dropDisabled || source === delegate)
            return false
        Logger.info("***Manual sorting changed.***")
        var targetIndex = delegateIndex
        var sourceIndex = source.currentItemIndex
        var page = listPage
        // The view has to leave the drag state before the rows move.
        FunctionHelper.delayFunctionCall(10, function () {
            page.dragActive = false
            source.itemMoved()
            page.model.moveItem(sourceIndex, targetIndex)
            page.itemMovedByUser()
        })
        return true
    }

    function isCompleted(object) {
        return object !== undefined && object.STATE === COMPLETED_OBJECT_STATE
    }

    function handleDoubleClick(mouse) {
        listPage.objectDoubleClicked(itemObject)
    }

    function openContextMenu() {
        var menu = contextMenu.createObject(listPage, {
                                                "multiSelectionItemsOnly": listPage.selectedCount() > 1
                                            })
        menu.closed.connect(function () {
            FunctionHelper.delayFunctionCall(300, function () { menu.destroy() })
        })
        menu.popup()
    }

    function deleteItem() {
        listPage.handleDeleteObjects()
    }

    Drag.active: draggable.dragging
    Drag.source: delegate
    Drag.keys: [dragKey]
    Drag.hotSpot.x: dragXHotSpot
    Drag.hotSpot.y: grabOffsetY

    DraggableItem {
        id: draggable
        objectName: "draggableItem"
        anchors.fill: parent
        selected: delegate.isSelected
        current: delegate.isCurrent
        dragEnabled: delegate.dragEnabled
        flicking: delegate.listPage ? delegate.listPage.flicking : false
        onPressAndHold: delegate.startDrag()
        onPositionChanged: delegate.followPointer(mouse)
        onReleased: delegate.finishDrag()
        onClicked: {
            delegate.listPage.handleClick(delegate.delegateIndex, mouse.button, mouse.modifiers)
            if (mouse.button === Qt.RightButton && delegate.contextMenuEnabled)
                delegate.openContextMenu()
        }
        onDoubleClicked: delegate.handleDoubleClick(mouse)
    }
}

import QtQuick 2.15
import QtQml.Models 2.15
import com.kelmora.helpers 1.0
import "../Components"

// One row of a list page: its place in the selection, the section header above it when the section
// changes, the drop zone for dragged rows, and the page's content delegate in a loader.
Item {
    id: listDelegate

    property Item listPage
    readonly property int delegateIndex: index
    readonly property var itemObject: model.listItemRole
    readonly property string objectId: itemObject && itemObject.ID !== undefined ? itemObject.ID : ""
    readonly property bool selected: DelegateModel.inSelected
    readonly property bool current: ListView.isCurrentItem
    property Component contentComponent: listPage.delegateFor ? listPage.delegateFor(itemObject) : listPage.delegate
    readonly property alias contentItem: contentLoader.item
    property bool interactive: true

    readonly property string section: ListView.section
    readonly property bool sectionStarts: listPage.sectionProperty !== ""
                                          && (index === 0 ? listPage.showMainSectionHeader
                                                          : ListView.previousSection !== ListView.section)
    readonly property bool collapsed: listPage.collapsedSections[section] === true
    // The group of the daily plan a row stands in; undefined in other lists.
    readonly property var dailyPlanGroup: model.dailyPlanRole
    property bool dropInside: false

    function switchDescription() { FunctionHelper.callIfProvided(contentItem, "switchDescription") }
    function showProperties() { FunctionHelper.callIfProvided(contentItem, "showProperties") }
    function copy() { FunctionHelper.callIfProvided(contentItem, "copy") }
    function cut() { FunctionHelper.callIfProvided(contentItem, "cut") }
    function deleteItem() { FunctionHelper.callIfProvided(contentItem, "deleteItem") }

    function selectItem() { listPage.selectIndex(index) }
    function selectItemsRange(from, to) { listPage.selectRange(from, to) }
    function deselectItem() { listPage.deselectIndex(index) }
    function getSelectionListCount() { return listPage.selectedCount() }
    function clearSelectionList() { listPage.clearItemsSelection() }
    function getSelectedObjectsList() { return listPage.selectedObjects() }

    // A dragged row floats on the page; it comes home when the drag ends.
    function takeBackContent() {
        contentItem.parent = contentHolder
        contentItem.x = 0
        contentItem.y = 0
        contentItem.z = 0
    }

    objectName: "listDelegate_" + index
    width: ListView.view ? ListView.view.width : 0
    height: sectionHeader.height + contentHolder.height

    SectionHeader {
        id: sectionHeader
        width: parent.width
        visible: listDelegate.sectionStarts
        height: visible ? appStyle.pages.sectionHeaderHeight : 0
        listPage: listDelegate.listPage
        section: listDelegate.section
    }

    Item {
        id: contentHolder
        objectName: "listRow_" + (listDelegate.itemObject && listDelegate.itemObject.NAME !== undefined
                                  ? listDelegate.itemObject.NAME : "")
        anchors.top: sectionHeader.bottom
        width: parent.width
        height: listDelegate.collapsed || !contentLoader.item ? 0 : contentLoader.item.height
        visible: !listDelegate.collapsed

        Loader {
            id: contentLoader
            width: parent.width
            sourceComponent: listDelegate.contentComponent
            onLoaded: item.listDelegate = listDelegate
        }
    }

    DropArea {
        id: dropArea
        anchors.fill: contentHolder
        keys: listDelegate.contentItem ? [listDelegate.contentItem.dragKey] : []

        function pointerInside(drag) {
            var fromBelow = drag.source.currentItemIndex > listDelegate.delegateIndex
            return fromBelow ? drag.y > height * 0.4 : drag.y < height * 0.6
        }

        onEntered: {
            var target = listDelegate.contentItem
            if (drag.source === target || !target.handleDragEntered(drag.source)) {
                drag.accepted = false
                return
            }
            listDelegate.dropInside = pointerInside(drag)
        }
        onPositionChanged: listDelegate.dropInside = pointerInside(drag)
        onDropped: {
            var target = listDelegate.contentItem
            if (listDelegate.dropInside && !target.dragInEnabled) {
                drop.accepted = false
                return
            }
            drop.accepted = target.handleDrop(drop.source, listDelegate.dropInside) !== false
        }
    }

    Rectangle {
        id: insertLine
        readonly property bool fromBelow: dropArea.drag.source
                                          && dropArea.drag.source.currentItemIndex > listDelegate.delegateIndex
        visible: dropArea.containsDrag && !listDelegate.dropInside
        width: parent.width - 12
        x: 12
        height: 2
        y: fromBelow ? contentHolder.y : contentHolder.y + contentHolder.height - height
        color: Settings.applicationColor

        Rectangle {
            width: 8
            height: 8
            radius: 4
            x: -8
            anchors.verticalCenter: parent.verticalCenter
            border.color: Settings.applicationColor
            border.width: 2
            color: "transparent"
        }
    }

    Rectangle {
        anchors.fill: contentHolder
        visible: dropArea.containsDrag && listDelegate.dropInside && listDelegate.contentItem.dragInEnabled
        color: "transparent"
        border.width: 2
        border.color: Settings.applicationColor
    }
}

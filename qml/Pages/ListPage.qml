import QtQuick 2.15
import QtQml.Models 2.15
import com.kelmora.helpers 1.0
import "../Components"
import "../Delegates"

// Every list of the interface: a model from a service shown row by row, with the selection, the
// drag into manual order, section headers and the placeholder of an empty list.
Page {
    id: listPage

    property string parentObjectId
    property int treeLevel: 0
    property bool pasteActionEnabled: true
    property var model
    property Component delegate
    // Lists that mix kinds pick the row's content by its object; null uses the delegate above.
    property var delegateFor: null
    readonly property int itemCount: listView.count
    property bool hasTasksInList: false
    readonly property bool hasSelectedListItem: listView.currentIndex !== -1 || selectedGroup.count > 0
    readonly property Item listCurrentItem: listView.currentItem
    readonly property alias listView: listView

    property string noActiveObjectsText
    property bool noActiveObjectsItemVisible: model ? model.activeObjectCount === 0 : false

    property Component headerComponent: null
    readonly property Item headerItem: listView.headerItem
    property bool headerVisible: true

    property string sectionProperty
    property var sectionInfoHash: ({})
    property bool showMainSectionHeader: true
    property string mainSectionName
    property var mainSectionNameUpdater: null
    property var collapsedSections: ({})

    property Component emptySpaceContextMenu: null
    property bool switchToManualModeEnabled: true
    property bool keyboardRangeEnabled: true
    property bool dragEnabled: true
    property bool isMethodArticleVisible: false

    property string placeholderMainText
    property string placeholderExtraText
    property string placeholderArticleId
    property string placeholderImageName
    property Component emptyListPlaceholder: defaultPlaceholder

    property bool dragActive: false
    property bool addTransitionEnabled: true
    readonly property bool flicking: listView.flicking || listView.dragging

    property string lastSelectedObjectId
    property bool isDownDirection: true

    signal showCurrentItemDescription()
    signal showCurrentItemProperties()
    signal openCurrentItemIfPossible()
    signal copyActionClicked()
    signal cutActionClicked()
    signal selectAllActionClicked()
    signal pasteActionClicked()
    signal objectDoubleClicked(var object)
    signal emptySpaceClicked()
    signal aboutToAddItemsToSplitView()
    signal listItemDragCoorChanged(real x, real y)
    signal itemMovedByUser()

    function setCurrentIndex(index) {
        listView.currentIndex = index
        if (index < 0) {
            lastSelectedObjectId = ""
            return
        }
        clearSelectedGroup()
        selectIndex(index)
        lastSelectedObjectId = idAt(index)
        listView.positionViewAtIndex(index, ListView.Contain)
        listView.forceActiveFocus()
    }

    function incrementCurrentIndex() {
        if (listView.currentIndex < itemCount - 1)
            setCurrentIndex(listView.currentIndex + 1)
    }

    function decrementCurrentIndex() {
        if (listView.currentIndex > 0)
            setCurrentIndex(listView.currentIndex - 1)
        else if (listView.currentIndex === -1 && itemCount > 0)
            setCurrentIndex(0)
    }

    function clearItemsSelection() {
        clearSelectedGroup()
        listView.currentIndex = -1
        lastSelectedObjectId = ""
    }

    function getCurrentTasks() { return model ? model.getTaskList() : [] }
    function getAllObjects() { return model ? model.getObjectList() : [] }
    function positionViewAtBeginning() { listView.positionViewAtBeginning() }

    function resetSectionProperty() { sectionProperty = "" }

    function setSectionPropertyDelayed(value) {
        FunctionHelper.callAfterProcessEventQueue(function () { sectionProperty = value })
    }

    function showManualSortingAnimation() {
        var first = listView.itemAtIndex(0)
        if (first)
            manualSortingHint.runOn(first)
    }

    function idAt(index) {
        var object = model.getObjectByIndex(index)
        return object && object.ID !== undefined ? object.ID : ""
    }

    // Selection group.

    function clearSelectedGroup() {
        if (selectedGroup.count > 0)
            selectedGroup.remove(0, selectedGroup.count)
    }

    function selectIndex(index) {
        if (index >= 0 && index < itemCount)
            visualModel.items.addGroups(index, 1, "selected")
    }

    function deselectIndex(index) {
        if (index >= 0 && index < itemCount)
            visualModel.items.removeGroups(index, 1, "selected")
    }

    function isIndexSelected(index) {
        return index >= 0 && index < itemCount && visualModel.items.get(index).inSelected
    }

    function selectRange(from, to) {
        clearSelectedGroup()
        var first = Math.min(from, to)
        visualModel.items.addGroups(first, Math.abs(to - from) + 1, "selected")
    }

    function selectedCount() { return selectedGroup.count }

    function selectedIndexes() {
        var indexes = []
        for (var i = 0; i < selectedGroup.count; ++i)
            indexes.push(selectedGroup.get(i).itemsIndex)
        return indexes.sort(function (a, b) { return a - b })
    }

    function selectedObjects() {
        return selectedIndexes().map(function (index) { return model.getObjectByIndex(index) })
    }

    function selectAll() {
        if (itemCount === 0)
            return
        clearSelectedGroup()
        listView.currentIndex = 0
        lastSelectedObjectId = idAt(0)
        visualModel.items.addGroups(0, itemCount, "selected")
    }

    function handleClick(index, button, modifiers) {
        listView.forceActiveFocus()
        if (button === Qt.RightButton) {
            handleRightClick(index)
            return
        }
        if (modifiers === Qt.ControlModifier) {
            if (isIndexSelected(index))
                deselectIndex(index)
            else
                selectIndex(index)
            return
        }
        if (modifiers === Qt.ShiftModifier) {
            if (listView.currentIndex === -1)
                setCurrentIndex(index)
            else
                selectRange(listView.currentIndex, index)
            return
        }
        setCurrentIndex(index)
    }

    function handleRightClick(index) {
        if (selectedGroup.count === 1)
            clearSelectedGroup()
        if (selectedGroup.count <= 1)
            setCurrentIndex(index)
        selectIndex(index)
    }

    // Shift+Up and Shift+Down grow a contiguous range away from the current row, or shrink it back.
    function extendSelectionUp() {
        var selected = selectedIndexes()
        if (selected.length > 1) {
            if (isDownDirection)
                deselectIndex(selected[selected.length - 1])
            else if (selected[0] - 1 >= 0)
                selectIndex(selected[0] - 1)
            return
        }
        isDownDirection = false
        if (listView.currentIndex - 1 >= 0)
            selectIndex(listView.currentIndex - 1)
    }

    function extendSelectionDown() {
        if (listView.currentIndex === -1) {
            incrementCurrentIndex()
            return
        }
        var selected = selectedIndexes()
        if (selected.length > 1) {
            if (!isDownDirection)
                deselectIndex(selected[0])
            else if (selected[selected.length - 1] + 1 < itemCount)
                selectIndex(selected[selected.length - 1] + 1)
            return
        }
        isDownDirection = true
        if (listView.currentIndex + 1 < itemCount)
            selectIndex(listView.currentIndex + 1)
    }

    function beginDrag() {
        if (switchToManualModeEnabled)
            model.switchToManualSortingMode()
        dragActive = true
    }

    function openEmptySpaceMenu() {
        if (!emptySpaceContextMenu)
            return
        var menu = emptySpaceContextMenu.createObject(listPage)
        menu.closed.connect(function () {
            FunctionHelper.delayFunctionCall(300, function () { menu.destroy() })
        })
        menu.popup()
    }

    function handleEmptySpaceClick(button) {
        emptySpaceClicked()
        clearItemsSelection()
        if (button === Qt.RightButton)
            openEmptySpaceMenu()
    }

    // Removal. A single task goes without a question; anything else asks first.

    function objectType(object) {
        if (object.FOLDER == true)
            return "folder"
        if (object.PERIOD !== undefined)
            return "task"
        if (object.CONTEXT !== undefined)
            return "project"
        return "context"
    }

    function isProtectedObject(object) {
        return object.ID === "" || object.ID === PredefinedDataHelper.oneStepActionsId
    }

    function deletionQuestion(object) {
        if ((object.PERIOD !== undefined && object.PERIOD !== "") || object.REPEATED !== undefined)
            return qsTr("This operation will remove all instances of this repetitive task from all dates. Are you sure you want to proceed?")
        switch (objectType(object)) {
        case "project": return qsTr("Are you sure you want to delete this project and all of its tasks?")
        case "folder": return qsTr("Are you sure you want to delete this folder and all of its content?")
        case "context": return qsTr("Are you sure you want to delete this context?")
        }
        return qsTr("Are you sure you want to delete this task?")
    }

    function deletionTitle(object) {
        switch (objectType(object)) {
        case "project": return qsTr("Delete Project")
        case "folder": return qsTr("Delete Folder")
        case "context": return qsTr("Delete Context")
        }
        return qsTr("Delete Task")
    }

    function handleDeleteObjects() {
        var objects = selectedObjects()
        if (objects.length === 0 && listView.currentIndex !== -1)
            objects = [model.getObjectByIndex(listView.currentIndex)]
        if (objects.length === 0)
            return
        if (objects.length === 1) {
            var object = objects[0]
            if (isProtectedObject(object))
                return
            if (objectType(object) === "task") {
                deleteObjects(objects)
                return
            }
            popupHelper.showQuestionDialog(deletionTitle(object), deletionQuestion(object),
                                          function () { deleteObjects(objects) })
            return
        }
        popupHelper.showQuestionDialog(qsTr("Delete objects"), qsTr("Are you sure you want to delete all these objects?"),
                                       function () { deleteObjects(objects) })
    }

    function removeObject(object, isLast) {
        switch (objectType(object)) {
        case "task": return TaskHandler.markTaskAsDeleted(object, isLast)
        case "context": return ContextHandler.markContextAsDeleted(object, isLast)
        }
        return ProjectHandler.markProjectAsDeleted(object, isLast)
    }

    function deleteObjects(objects) {
        var filtered = objects.filter(function (object) { return !isProtectedObject(object) })
        if (filtered.length === 0)
            return
        popupHelper.showUndoPopup(filtered)
        if (filtered.length > 1)
            clearItemsSelection()
        filtered.forEach(function (object, i) { removeObject(object, i === filtered.length - 1) })
    }

    function refreshAfterUpdate() {
        hasTasksInList = getCurrentTasks().length > 0
        if (mainSectionNameUpdater)
            mainSectionName = mainSectionNameUpdater()
        if (lastSelectedObjectId === "")
            return
        var selectedId = lastSelectedObjectId
        FunctionHelper.callAfterProcessEventQueue(function () {
            var index = model.getIndexByObjectId(selectedId)
            if (index === -1)
                clearItemsSelection()
            else if (selectedGroup.count > 1)
                listView.currentIndex = index
            else
                setCurrentIndex(index)
        })
    }

    function handleKey(event) {
        if (popupHelper.isPopupVisible || pageLoader.currentListPage !== listPage)
            return
        var shift = event.modifiers & Qt.ShiftModifier
        switch (event.key) {
        case Qt.Key_Up:
            if (shift && keyboardRangeEnabled)
                extendSelectionUp()
            else
                decrementCurrentIndex()
            break
        case Qt.Key_Down:
            if (shift && keyboardRangeEnabled)
                extendSelectionDown()
            else
                incrementCurrentIndex()
            break
        case Qt.Key_A:
            if (!(event.modifiers & Qt.ControlModifier))
                return
            selectAll()
            break
        case Qt.Key_Delete:
        case Qt.Key_Backspace:
            if (listCurrentItem)
                listCurrentItem.deleteItem()
            else if (selectedGroup.count > 0)
                handleDeleteObjects()
            break
        case Qt.Key_Return:
        case Qt.Key_Enter:
            openCurrentItemIfPossible()
            break
        default:
            return
        }
        event.accepted = true
    }

    onModelChanged: hasTasksInList = getCurrentTasks().length > 0
    onSelectAllActionClicked: selectAll()
    onCopyActionClicked: {
        if (listCurrentItem)
            listCurrentItem.copy()
    }
    onCutActionClicked: {
        if (listCurrentItem)
            listCurrentItem.cut()
    }
    onOpenCurrentItemIfPossible: {
        if (listView.currentIndex === -1)
            return
        var object = model.getObjectByIndex(listView.currentIndex)
        if (object.PERIOD !== undefined)
            FunctionHelper.callIfProvided(popupHelper, "showTaskPreviewPopup", [object])
        else
            objectDoubleClicked(object)
    }

    Component.onDestruction: {
        if (model)
            model.requestDeletion()
    }

    Connections {
        target: listPage.model || null
        ignoreUnknownSignals: true
        function onUpdated() { listPage.refreshAfterUpdate() }
    }

    Connections {
        target: mainWindow.pageContent
        enabled: pageLoader.currentListPage === listPage
        function onSelectAllClicked() { listPage.selectAllActionClicked() }
        function onCopyClicked() { listPage.copyActionClicked() }
        function onCutClicked() { listPage.cutActionClicked() }
        function onPasteClicked() {
            if (listPage.pasteActionEnabled)
                listPage.pasteActionClicked()
        }
    }

    DelegateModel {
        id: visualModel

        // Rows name their page "listPage" themselves; this is how they reach it.
        property Item ownerPage: listPage

        model: listPage.model
        groups: [
            DelegateModelGroup {
                id: selectedGroup
                name: "selected"
            }
        ]
        delegate: ListDelegate {
            listPage: visualModel.ownerPage
        }
    }

    Rectangle {
        anchors.fill: parent
        color: appStyle.colors.listRow
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onClicked: listPage.handleEmptySpaceClick(mouse.button)
    }

    StyledListView {
        id: listView
        objectName: "listView"
        anchors.fill: parent
        model: visualModel
        header: listPage.headerVisible ? listPage.headerComponent : null
        dragActive: listPage.dragActive
        transitionsEnabled: listPage.addTransitionEnabled
        section.property: listPage.sectionProperty
        focus: true
        Keys.onPressed: listPage.handleKey(event)

        footer: Item {
            width: listView.width
            height: noActiveItem.visible ? noActiveItem.height : 0

            StyledLabel {
                id: noActiveItem
                objectName: "noActiveObjectsLabel"
                visible: listPage.noActiveObjectsItemVisible && listPage.itemCount > 0
                         && listPage.noActiveObjectsText !== ""
                width: parent.width
                height: 150
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                text: listPage.noActiveObjectsText
                color: appStyle.pages.placeholderText
                font.pixelSize: 14
            }
        }

        // Empty space below the rows answers clicks like the page's background.
        MouseArea {
            y: listView.contentHeight - listView.contentY
            width: listView.width
            height: Math.max(0, listView.height - y)
            acceptedButtons: Qt.LeftButton | Qt.RightButton
            onClicked: listPage.handleEmptySpaceClick(mouse.button)
        }
    }

    Loader {
        objectName: "emptyListPlaceholder"
        anchors.fill: parent
        anchors.topMargin: listView.headerItem ? listView.headerItem.height : 0
        active: listPage.itemCount === 0 && listPage.placeholderMainText !== ""
        sourceComponent: listPage.emptyListPlaceholder
    }

    Component {
        id: defaultPlaceholder

        ListPlaceholder {
            imageName: listPage.placeholderImageName
            mainText: listPage.placeholderMainText
            extraText: listPage.placeholderExtraText
            articleId: listPage.placeholderArticleId
        }
    }

    ManualSortingHint {
        id: manualSortingHint
    }
}

import QtQuick 2.15
import QtQuick.Controls 2.15
import "../Components"

// Picks a project or a context from its tree, or from a flat list of matches while a search text is
// typed. Only a project or a context is taken: a folder row opens and closes.
RoundedPopup {
    id: popup

    // "PROJECT" or "CONTEXT".
    property string treeModelType: "PROJECT"
    property var treeModel: null
    property var searchModel: null
    readonly property bool searching: searchField.text !== ""
    readonly property var currentView: searching ? searchView : treeView

    signal itemChanged(string id)

    function createModels() {
        releaseModels()
        if (treeModelType === "CONTEXT") {
            treeModel = ContextHandler.getContextTreeModel("")
            searchModel = ContextHandler.getAllContextsSearchModel()
        } else {
            treeModel = ProjectHandler.getProjectTreeModelWithNorvelBox()
            searchModel = ProjectHandler.getAllProjectsSearchModel()
        }
    }

    function releaseModels() {
        if (treeModel)
            treeModel.requestDeletion()
        if (searchModel)
            searchModel.requestDeletion()
        treeModel = null
        searchModel = null
    }

    function isFolder(object) {
        return treeModelType === "PROJECT" && object.FOLDER == true
    }

    function rowOf(id) {
        for (var row = 0; row < treeView.count; ++row) {
            if (treeModel.getObjectByIndex(row).ID === id)
                return row
        }
        return -1
    }

    // Opens the ancestors from the root down, so that the row is there to select.
    function selectTreeItem(id) {
        var chain = []
        var parentId = treeModel.getObjectById(id).PARENT
        while (parentId) {
            var parent = treeModel.getObjectById(parentId)
            if (parent.ID === undefined)
                break
            chain.unshift(parent.ID)
            parentId = parent.PARENT
        }
        chain.forEach(function (ancestorId) { treeModel.openItem(ancestorId) })
        treeView.currentIndex = rowOf(id)
        treeView.positionViewAtIndex(Math.max(treeView.currentIndex, 0), ListView.Contain)
    }

    function toggle(object) {
        if (treeModel.getObjectById(object.ID).ID === undefined)
            return
        var row = rowOf(object.ID)
        if (treeView.itemAtIndex(row) && treeView.itemAtIndex(row).opened)
            treeModel.closeItem(object.ID)
        else
            treeModel.openItem(object.ID)
    }

    function choose(object) {
        if (!object || object.ID === undefined)
            return
        if (isFolder(object)) {
            toggle(object)
            return
        }
        itemChanged(object.ID)
        destroyPopup()
    }

    function chooseCurrent() {
        if (currentView.currentIndex >= 0)
            choose(currentView.model.getObjectByIndex(currentView.currentIndex))
    }

    function moveCurrent(step) {
        var view = currentView
        view.currentIndex = Math.max(0, Math.min(view.count - 1, view.currentIndex + step))
    }

    // Right-aligned with the anchor, below it or above it where there is more room, and inside the
    // window even when neither side has room enough.
    function placeNear(anchor) {
        var point = anchor.mapToItem(popup, anchor.width - popupWidth, 0)
        var roomAbove = point.y
        var roomBelow = height - point.y - anchor.height
        var top = roomAbove > roomBelow ? point.y - popupHeight : point.y + anchor.height
        moveTo(point.x, Math.min(top, height - popupHeight - 10))
    }

    function takeFocus() {
        searchField.forceActiveFocus()
    }

    objectName: "TreeViewPopup"
    popupWidth: 400
    popupHeight: 500
    destroyOnClick: true

    // A caller may also set the type after the popup is made.
    onTreeModelTypeChanged: if (treeModel) createModels()
    Component.onCompleted: createModels()
    Component.onDestruction: {
        treeModel.requestDeletion()
        searchModel.requestDeletion()
    }

    TextField {
        id: searchField
        objectName: "treeViewSearchField"
        x: 16
        y: 16
        width: popup.popupWidth - 32
        height: 32
        leftPadding: 30
        font.pixelSize: 13
        placeholderText: qsTr("Search")
        selectByMouse: true
        color: appStyle.colors.taskName
        placeholderTextColor: appStyle.colors.lightGray
        onTextChanged: {
            popup.searchModel.searchString = text
            searchView.currentIndex = searchView.count > 0 ? 0 : -1
        }
        // The field keeps the focus while the rows are walked and taken with the keys.
        Keys.onEscapePressed: popup.destroyPopup()
        Keys.onReturnPressed: popup.chooseCurrent()
        Keys.onEnterPressed: popup.chooseCurrent()
        Keys.onUpPressed: popup.moveCurrent(-1)
        Keys.onDownPressed: popup.moveCurrent(1)

        background: Rectangle {
            radius: 6
            color: appStyle.dark ? appStyle.colors.dmMainDarkColor : "white"
            border.color: searchField.activeFocus ? Settings.applicationColor : appStyle.components.toolBar.borderColor
        }

        ColoredIcon {
            anchors.left: parent.left
            anchors.leftMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            width: 16
            height: 16
            iconSource: "search.svg"
        }
    }

    Rectangle {
        id: separator
        anchors.top: searchField.bottom
        anchors.topMargin: 12
        width: popup.popupWidth
        height: 1
        color: appStyle.components.toolBar.borderColor
    }

    ListView {
        id: treeView
        objectName: "treeViewPopupTree"
        anchors.top: separator.bottom
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 16
        width: popup.popupWidth
        visible: !popup.searching
        clip: true
        model: popup.treeModel
        currentIndex: -1
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: 0
        ScrollBar.vertical: ScrollBar {}

        delegate: TreeRowDelegate {
            objectName: "pickerRow_" + Helper.objectDisplayName(treeItemRole)
            width: treeView.width
            object: treeItemRole
            hasChildren: hasChildrenRole
            opened: isItemOpenedRole
            selected: ListView.isCurrentItem
            iconSource: popup.treeModelType === "CONTEXT" ? "contexts.svg"
                                                          : treeItemRole.FOLDER == true ? "projects.svg" : "norvel_box.svg"
            onClicked: {
                treeView.currentIndex = index
                popup.choose(object)
            }
            onToggled: popup.toggle(object)
        }
    }

    ListView {
        id: searchView
        objectName: "treeViewPopupSearchList"
        anchors.fill: treeView
        visible: popup.searching
        clip: true
        model: popup.searchModel
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar {}

        delegate: TreeRowDelegate {
            objectName: "pickerSearchRow_" + listItemRole.NAME
            width: searchView.width
            object: listItemRole
            selected: ListView.isCurrentItem
            iconSource: popup.treeModelType === "CONTEXT" ? "contexts.svg" : "norvel_box.svg"
            onClicked: popup.choose(object)
        }
    }

    StyledLabel {
        anchors.centerIn: searchView
        visible: popup.searching && searchView.count === 0
        text: qsTr("Nothing found")
        color: appStyle.colors.lightGray
    }
}

import QtQuick 2.15
import QtQuick.Controls 2.15
import com.kelmora.helpers 1.0
import "../Components"
import "../Pages/ObjectClipboard.js" as ObjectClipboard

// A project, folder or context as one row, where a list mixes kinds: the levels of the project and
// context pages, the daily plan's projects, the search results and the trash. In the trash the row
// offers a restore.
DraggableDelegate {
    id: row

    readonly property var object: itemObject || ({})
    readonly property string displayName: object.NAME !== undefined ? Helper.objectDisplayName(object) : ""
    readonly property string kind: ObjectClipboard.kindOf(object)
    readonly property bool completed: object.STATE === COMPLETED_OBJECT_STATE
    readonly property bool trashMode: listPage ? listPage.trashMode === true : false
    readonly property string memo: object.MEMO !== undefined && object.MEMO !== null ? object.MEMO : ""
    property bool memoOpen: false
    property var textDecorator: function (text) { return UrlHelper.convertToHtmlUrls(text) }
    // The lists of the project and context pages offer the row's own menu.
    property bool rowMenuEnabled: false
    readonly property bool movable: ObjectClipboard.canMove(object)

    signal restoreClicked()

    objectName: kind + "_" + (object.NAME !== undefined ? object.NAME : "")
    dragKey: kind
    dragEnabled: listPage ? listPage.dragEnabled && movable && !completed && !trashMode : false
    contextMenu: rowMenuEnabled && movable ? objectMenu : null
    height: Math.max(48, column.implicitHeight + 16)

    // The stored record: a list row may carry keys of its own.
    function storedObject() {
        return kind === "context" ? ContextHandler.getContextById(object.ID) : ProjectHandler.getProjectById(object.ID)
    }

    function save(changed) {
        if (kind === "context")
            objectUpdater.updateContext(changed)
        else
            objectUpdater.updateProject(changed)
    }

    // Drops on the tree: a new parent folder or context, or a project's new context.
    function changeParent(parentId) {
        var changed = storedObject()
        changed.PARENT = parentId
        save(changed)
    }

    function changeParentFolder(folderId) {
        changeParent(folderId)
    }

    function changeContext(contextId) {
        var changed = storedObject()
        changed.CONTEXT = contextId
        save(changed)
    }

    // What lies in the trash is restored, not pasted.
    function copy() {
        if (!trashMode)
            ObjectClipboard.copyObject(storedObject())
    }

    function cut() {
        if (!trashMode)
            ObjectClipboard.cutObject(storedObject())
    }

    function edit() {
        if (kind === "folder")
            popupHelper.showFolderPopup(storedObject())
        else if (kind === "project")
            popupHelper.showProjectPopup(storedObject())
        else
            popupHelper.showContextPopup(storedObject())
    }

    function toggleCompleted() {
        var project = storedObject()
        if (completed)
            ProjectHandler.restoreProject(project)
        else
            popupHelper.completeProject(project)
    }

    function isFavorite() {
        return kind === "context" ? ContextHandler.inFavorites(object) : ProjectHandler.inFavorites(object)
    }

    function toggleFavorite() {
        var handler = kind === "context" ? ContextHandler : ProjectHandler
        if (isFavorite())
            handler.removeFromFavorites(object)
        else
            handler.addToFavorites(object)
    }

    function daysLeft() {
        var wholeDays = Math.floor((Date.now() - Number(object.TIMESTAMP) * 1000) / 86400000)
        return Math.max(0, 14 - wholeDays)
    }

    ColoredIcon {
        id: icon
        x: 16
        anchors.verticalCenter: parent.verticalCenter
        width: 20
        height: 20
        iconSource: row.kind === "context" ? "contexts.svg" : row.kind === "project" ? "norvel_box.svg" : "projects.svg"
    }

    Column {
        id: column
        anchors.left: icon.right
        anchors.leftMargin: 12
        anchors.right: restoreColumn.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        StyledLabel {
            width: parent.width
            text: row.textDecorator(row.displayName)
            textFormat: Text.RichText
            wrapMode: Text.Wrap
            font.pixelSize: 14
            font.bold: row.kind === "folder"
            font.strikeout: row.completed
            color: row.completed ? appStyle.colors.completedTask : appStyle.colors.taskName
        }

        StyledLabel {
            width: parent.width
            visible: row.memoOpen && row.memo !== ""
            text: row.textDecorator(row.memo)
            textFormat: Text.RichText
            wrapMode: Text.Wrap
            color: appStyle.colors.memoText
            font.pixelSize: 12
        }
    }

    Column {
        id: restoreColumn
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        visible: row.trashMode
        width: visible ? implicitWidth : 0
        spacing: 2

        Button {
            objectName: "restoreButton_" + row.displayName
            text: qsTr("Restore")
            // Shown on hover but always there, so that moving onto it never hides it.
            opacity: row.hovered || hovered ? 1 : 0
            onClicked: row.restoreClicked()
        }

        StyledLabel {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("%n day(s)", "", row.daysLeft())
            color: appStyle.colors.lightGray
            font.pixelSize: 11
        }
    }

    Component {
        id: objectMenu

        NvMenu {
            id: menu
            objectName: "objectRowMenu"

            property bool multiSelectionItemsOnly: false
            readonly property bool single: !multiSelectionItemsOnly
            readonly property bool canNest: row.listPage.treeLevel + 1 < 8

            NvMenuItem {
                objectName: "objectRowComplete"
                visible: menu.single && row.kind === "project"
                height: visible ? implicitHeight : 0
                label: row.completed ? qsTr("Mark as not complete") : qsTr("Mark as completed")
                onActivated: row.toggleCompleted()
            }
            NvMenuItem {
                visible: menu.single && row.kind !== "folder"
                height: visible ? implicitHeight : 0
                label: row.isFavorite() ? qsTr("Remove from Favorites") : qsTr("Add to Favorites")
                onActivated: row.toggleFavorite()
            }
            NvMenuItem {
                visible: menu.single && row.kind === "folder" && menu.canNest
                height: visible ? implicitHeight : 0
                label: qsTr("Add nested folder")
                onActivated: popupHelper.showFolderPopup(null, row.object.ID)
            }
            NvMenuItem {
                visible: menu.single && row.kind === "folder"
                height: visible ? implicitHeight : 0
                label: qsTr("Add a project to this folder")
                onActivated: popupHelper.showProjectPopup(null, row.object.ID)
            }
            NvMenuItem {
                visible: menu.single && row.kind === "project"
                height: visible ? implicitHeight : 0
                label: qsTr("Add a task to this project")
                onActivated: popupHelper.showTaskPopupWithProject(row.object.ID)
            }
            NvMenuItem {
                visible: menu.single && row.kind === "context" && menu.canNest
                height: visible ? implicitHeight : 0
                label: qsTr("Add nested context")
                onActivated: popupHelper.showContextPopup(null, row.object.ID)
            }
            NvMenuItem {
                objectName: "objectRowEdit"
                visible: menu.single
                height: visible ? implicitHeight : 0
                label: row.kind === "folder" ? qsTr("Edit Folder")
                                             : row.kind === "project" ? qsTr("Edit Project") : qsTr("Edit Context")
                onActivated: row.edit()
            }
            NvMenuItem {
                objectName: "objectRowDelete"
                label: menu.multiSelectionItemsOnly ? qsTr("Delete selected items")
                                                      : row.kind === "folder" ? qsTr("Delete Folder")
                                                                              : row.kind === "project" ? qsTr("Delete Project")
                                                                                                       : qsTr("Delete Context")
                onActivated: row.deleteItem()
            }
            NvMenuItem {
                objectName: "objectRowCut"
                visible: menu.single
                height: visible ? implicitHeight : 0
                label: qsTr("Cut")
                onActivated: row.cut()
            }
            NvMenuItem {
                objectName: "objectRowCopy"
                visible: menu.single
                height: visible ? implicitHeight : 0
                label: qsTr("Copy")
                onActivated: row.copy()
            }
        }
    }
}

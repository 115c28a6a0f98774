import QtQuick 2.15
import QtQuick.Controls 2.15
import "../Components"

// A project, folder or context as one row, where a list mixes kinds: the search results and the
// trash. In the trash the row offers a restore.
DraggableDelegate {
    id: row

    readonly property var object: itemObject || ({})
    readonly property string displayName: object.NAME !== undefined ? object.NAME : ""
    readonly property string kind: object.FOLDER === true ? "folder"
                                                          : object.CONTEXT !== undefined ? "project" : "context"
    readonly property bool completed: object.STATE === COMPLETED_OBJECT_STATE
    readonly property bool trashMode: listPage ? listPage.trashMode === true : false
    readonly property string memo: object.MEMO !== undefined && object.MEMO !== null ? object.MEMO : ""
    property bool memoOpen: false
    property var textDecorator: function (text) { return UrlHelper.convertToHtmlUrls(text) }

    signal restoreClicked()

    objectName: kind + "_" + displayName
    dragKey: kind
    dragEnabled: false
    height: Math.max(48, column.implicitHeight + 16)

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
        iconSource: row.kind === "context" ? "contexts.svg" : "projects.svg"
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
}

import QtQuick 2.15
import QtQuick.Controls 2.15
import "../Components"

// A page that walks down a tree of objects one level at a time and back again through its
// history. Subclasses say where the objects come from; the full tree and task lists come later.
HistoryPage {
    id: page

    property var currentObject: null
    property var objects: []
    property string emptyText
    property string itemIconSource
    readonly property alias navigationElement: objectList

    // Subclasses answer the objects below an object, or the roots for null.
    function childObjects(object) {
        return []
    }

    // Subclasses tell which objects can be entered.
    function hasChildren(object) {
        return false
    }

    function show(object) {
        currentObject = object
        objects = childObjects(object)
    }

    function enter(object) {
        pushToHistoryStack(object)
        show(object)
    }

    function selectTreeItem(object) {
        show(object || null)
    }

    function hideTreeView() {
        objectList.visible = false
    }

    function handleBackAction() {
        var item = popFromBackHistoryStack()
        if (item !== undefined && typeof item !== "string")
            show(item)
    }

    function handleForwardAction() {
        var item = popFromForwardHistoryStack()
        if (item !== undefined)
            show(item)
    }

    function handleHideNavigationAction() {
        objectList.visible = !objectList.visible
    }

    Component.onCompleted: {
        pushToHistoryStack(null)
        show(null)
    }

    Rectangle {
        anchors.fill: parent
        color: appStyle.mainWindow.backgroundColor
    }

    Column {
        anchors.fill: parent

        Rectangle {
            width: parent.width
            height: appStyle.pages.sectionHeaderHeight
            color: appStyle.pages.sectionHeaderBackground

            StyledLabel {
                objectName: "navigationTitle"
                anchors.left: parent.left
                anchors.leftMargin: 16
                anchors.verticalCenter: parent.verticalCenter
                text: page.currentObject ? page.currentObject.NAME : page.sectionHeader
                color: appStyle.pages.sectionHeaderText
                font.bold: true
            }
        }

        ListView {
            id: objectList
            objectName: "navigationList"
            width: parent.width
            height: parent.height - appStyle.pages.sectionHeaderHeight
            clip: true
            model: page.objects
            boundsBehavior: Flickable.StopAtBounds
            ScrollBar.vertical: ScrollBar {}

            delegate: Rectangle {
                objectName: "navigationRow_" + modelData.NAME
                width: objectList.width
                height: appStyle.pages.treeRowHeight
                color: rowArea.containsMouse ? appStyle.colors.treeSelection : "transparent"

                ColoredIcon {
                    id: rowIcon
                    anchors.left: parent.left
                    anchors.leftMargin: 16
                    anchors.verticalCenter: parent.verticalCenter
                    width: 18
                    height: 18
                    iconSource: modelData.FOLDER == true ? "projects.svg" : page.itemIconSource
                }

                StyledLabel {
                    anchors.left: rowIcon.right
                    anchors.leftMargin: 10
                    anchors.right: parent.right
                    anchors.rightMargin: 16
                    anchors.verticalCenter: parent.verticalCenter
                    text: modelData.NAME
                    color: appStyle.colors.taskName
                    elide: Text.ElideRight
                }

                Rectangle {
                    anchors.bottom: parent.bottom
                    x: 16
                    width: parent.width - 16
                    height: 1
                    color: appStyle.colors.selectedRow
                }

                MouseArea {
                    id: rowArea
                    anchors.fill: parent
                    hoverEnabled: true
                    cursorShape: page.hasChildren(modelData) ? Qt.PointingHandCursor : Qt.ArrowCursor
                    onClicked: {
                        if (page.hasChildren(modelData))
                            page.enter(modelData)
                    }
                }
            }

            StyledLabel {
                anchors.centerIn: parent
                width: parent.width - 80
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                visible: objectList.count === 0
                text: page.emptyText
                color: appStyle.pages.placeholderText
            }
        }
    }

}

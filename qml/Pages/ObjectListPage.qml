import QtQuick 2.15
import QtQuick.Controls 2.15
import com.kelmora.helpers 1.0
import "../Components"
import "../Delegates"
import "ObjectClipboard.js" as ObjectClipboard

// The objects of one level or one day: folders, projects and contexts to walk into, and tasks to
// complete. With sections on, rows group by their daily plan group under collapsible headers.
Item {
    id: listPage

    property var model
    property var listObject: null
    property string title
    property string emptyText
    property bool sectioned: false
    // Collapsed sections are kept by the owner, so that they survive a change of the model.
    property var collapsedSections: ({})
    property bool pasteActionEnabled: true
    readonly property bool hasSelectedListItem: listView.currentIndex !== -1
    readonly property var currentObject: hasSelectedListItem ? model.getObjectByIndex(listView.currentIndex) : null

    signal objectDoubleClicked(var object)
    signal sectionToggled(string section, bool collapsed)
    signal pasteActionClicked()
    signal sortActionClicked()

    function isTask(object) {
        return object.PERIOD !== undefined
    }

    // The one-step actions list stands among projects without a context of its own.
    function isProjectLike(object) {
        return object.CONTEXT !== undefined || object.ID === PredefinedDataHelper.oneStepActionsId
    }

    function completeTask(task) {
        if (typeof popupHelper.completeTask === "function") {
            popupHelper.completeTask(task)
            return
        }
        // Without the undo offer the completion is kept at once.
        if (TaskHandler.markTaskAsCompleted(task))
            TaskHandler.confirmTaskUpdate(task)
    }

    function sectionTitle(section) {
        switch (section) {
        case "0": return qsTr("%n task(s)", "", model.activeTaskCount)
        case "1": return qsTr("%n project(s)", "", model.activeProjectCount)
        case "2": return qsTr("Also available: %n task(s)", "", model.alsoAvailableTaskCount)
        case "3": return qsTr("Also available: %n project(s)", "", model.alsoAvailableProjectCount)
        default: return qsTr("Completed")
        }
    }

    function toggleSection(section) {
        var sections = collapsedSections
        sections[section] = !sections[section]
        collapsedSections = sections
        sectionToggled(section, sections[section])
    }

    function rowSubtitle(object) {
        if (!isTask(object))
            return ""
        if (!object.START && !object.DUE)
            return ""
        return DateFormatHelper.formatDatesForPreviewHeader(Helper.toUtcDateTime(object.START),
                                                            Helper.toUtcDateTime(object.DUE))
    }

    function selectRow(index) {
        listView.currentIndex = index
        listView.forceActiveFocus()
    }

    function clearItemsSelection() {
        listView.currentIndex = -1
    }

    function openRowMenu(index, object) {
        selectRow(index)
        rowMenu.object = object
        rowMenu.popup()
    }

    function copyCurrent() {
        if (currentObject)
            ObjectClipboard.copyObject(currentObject)
    }

    function cutCurrent() {
        var object = currentObject
        if (!object)
            return
        clearItemsSelection()
        ObjectClipboard.cutObject(object)
    }

    function requestPaste() {
        if (pasteActionEnabled && ObjectClipboard.hasObject())
            pasteActionClicked()
    }

    Component.onDestruction: {
        if (model)
            model.requestDeletion()
    }

    // Cut, copy and paste from the Edit menu reach the list the user looks at.
    Connections {
        target: mainWindow.pageContent
        enabled: pageLoader.currentListPage === listPage
        function onCopyClicked() { listPage.copyCurrent() }
        function onCutClicked() { listPage.cutCurrent() }
        function onPasteClicked() { listPage.requestPaste() }
    }

    Rectangle {
        anchors.fill: parent
        color: appStyle.colors.listRow
    }

    Rectangle {
        id: header
        width: parent.width
        height: appStyle.pages.sectionHeaderHeight + 10
        color: appStyle.pages.listHeaderBackground

        StyledLabel {
            objectName: "levelListTitle"
            anchors.left: parent.left
            anchors.leftMargin: 16
            anchors.right: parent.right
            anchors.rightMargin: 40
            anchors.verticalCenter: parent.verticalCenter
            text: listPage.title
            color: appStyle.pages.listHeaderText
            font.pixelSize: 15
            font.bold: true
            elide: Text.ElideRight
        }

        StyledLabel {
            objectName: "levelListMenuButton"
            anchors.right: parent.right
            anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            text: "\u2026"
            color: appStyle.pages.listHeaderText
            font.pixelSize: 20

            MouseArea {
                anchors.fill: parent
                anchors.margins: -6
                onClicked: listMenu.popup()
            }
        }
    }

    ListView {
        id: listView
        objectName: "objectList"
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        clip: true
        model: listPage.model
        boundsBehavior: Flickable.StopAtBounds
        currentIndex: -1
        ScrollBar.vertical: ScrollBar {}
        section.property: listPage.sectioned ? "dailyPlanRole" : ""
        section.delegate: listPage.sectioned ? sectionHeader : null

        delegate: Rectangle {
            id: row

            // Roles are read through the model object: a row being removed has lost its role names.
            readonly property var object: model.listItemRole || ({})
            readonly property bool completed: model.stateRole === COMPLETED_OBJECT_STATE
            readonly property bool collapsed: listPage.sectioned
                                              && listPage.collapsedSections[String(model.dailyPlanRole)] === true

            objectName: "listRow_" + object.NAME
            width: listView.width
            height: collapsed ? 0 : 50
            visible: !collapsed
            color: ListView.isCurrentItem || rowArea.containsMouse ? appStyle.colors.selectedRow : "transparent"

            MouseArea {
                id: rowArea
                anchors.fill: parent
                hoverEnabled: true
                acceptedButtons: Qt.LeftButton | Qt.RightButton
                onPressed: {
                    if (mouse.button === Qt.LeftButton && !row.completed && ObjectClipboard.canMove(row.object))
                        holdTimer.restart()
                }
                onPositionChanged: dragProxy.follow(rowArea, mouse)
                onReleased: {
                    holdTimer.stop()
                    dragProxy.finish()
                }
                onClicked: {
                    if (mouse.button === Qt.RightButton)
                        listPage.openRowMenu(index, row.object)
                    else
                        listPage.selectRow(index)
                }
                onDoubleClicked: {
                    holdTimer.stop()
                    listPage.objectDoubleClicked(row.object)
                }
            }

            // A press held for a moment lifts the row, to be dropped on the tree or on a calendar day.
            Timer {
                id: holdTimer
                interval: 200
                onTriggered: {
                    if (!listView.moving)
                        dragProxy.start(row.object)
                }
            }

            CheckBox {
                id: checkBox
                objectName: "completeBox_" + row.object.NAME
                anchors.left: parent.left
                anchors.leftMargin: 10
                anchors.verticalCenter: parent.verticalCenter
                visible: listPage.isTask(row.object)
                checked: row.completed
                enabled: !row.completed && row.object.ID !== undefined
                onClicked: listPage.completeTask(row.object)
            }

            ColoredIcon {
                id: icon
                anchors.left: parent.left
                anchors.leftMargin: 20
                anchors.verticalCenter: parent.verticalCenter
                width: 18
                height: 18
                visible: !checkBox.visible
                iconSource: row.object.FOLDER == true ? "projects.svg" : listPage.isProjectLike(row.object) ? "norvel_box.svg"
                                                                                                      : "contexts.svg"
            }

            Column {
                anchors.left: parent.left
                anchors.leftMargin: 52
                anchors.right: parent.right
                anchors.rightMargin: 16
                anchors.verticalCenter: parent.verticalCenter
                spacing: 2

                StyledLabel {
                    width: parent.width
                    text: Helper.objectDisplayName(row.object)
                    color: row.completed ? appStyle.colors.completedTask : appStyle.colors.taskName
                    font.strikeout: row.completed
                    elide: Text.ElideRight
                }

                StyledLabel {
                    width: parent.width
                    visible: text !== ""
                    text: listPage.rowSubtitle(row.object)
                    color: appStyle.colors.lightGray
                    font.pixelSize: 11
                    elide: Text.ElideRight
                }
            }

            Rectangle {
                anchors.bottom: parent.bottom
                x: 16
                width: parent.width - 16
                height: 1
                color: appStyle.colors.selectedRow
            }
        }

        MouseArea {
            y: listView.contentHeight - listView.contentY
            width: listView.width
            height: Math.max(0, listView.height - y)
            acceptedButtons: Qt.LeftButton | Qt.RightButton
            onClicked: {
                listPage.clearItemsSelection()
                if (mouse.button === Qt.RightButton)
                    emptySpaceMenu.popup()
            }
        }

        StyledLabel {
            objectName: "emptyListText"
            anchors.centerIn: parent
            width: parent.width - 80
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            visible: listView.count === 0
            text: listPage.emptyText
            color: appStyle.pages.placeholderText
        }
    }

    Component {
        id: sectionHeader

        Rectangle {
            objectName: "sectionHeader_" + section
            width: listView.width
            height: 30
            color: appStyle.pages.sectionHeaderBackground

            StyledLabel {
                objectName: "sectionTitle_" + section
                anchors.left: parent.left
                anchors.leftMargin: 16
                anchors.verticalCenter: parent.verticalCenter
                text: (listPage.collapsedSections[section] ? "\u203A  " : "\u2304  ") + listPage.sectionTitle(section)
                color: appStyle.pages.sectionHeaderText
                font.bold: true
            }

            MouseArea {
                anchors.fill: parent
                onClicked: listPage.toggleSection(section)
            }
        }
    }

    DragProxy {
        id: dragProxy
    }

    NvMenu {
        id: rowMenu
        objectName: "levelRowMenu"

        property var object: ({})

        NvMenuItem {
            objectName: "levelRowCut"
            label: qsTr("Cut")
            available: ObjectClipboard.canHold(rowMenu.object)
            onActivated: listPage.cutCurrent()
        }
        NvMenuItem {
            objectName: "levelRowCopy"
            label: qsTr("Copy")
            available: ObjectClipboard.canHold(rowMenu.object)
            onActivated: listPage.copyCurrent()
        }
    }

    NvMenu {
        id: emptySpaceMenu
        objectName: "levelEmptySpaceMenu"

        NvMenuItem {
            objectName: "levelListPaste"
            label: qsTr("Paste")
            available: listPage.pasteActionEnabled && Clipboard.object.NAME !== undefined
            onActivated: listPage.requestPaste()
        }
    }

    NvMenu {
        id: listMenu
        objectName: "levelListMenu"

        NvMenuItem {
            objectName: "levelListSort"
            label: qsTr("Sort")
            onActivated: listPage.sortActionClicked()
        }
        NvMenuItem {
            objectName: "levelListMenuPaste"
            label: qsTr("Paste")
            available: listPage.pasteActionEnabled && Clipboard.object.NAME !== undefined
            onActivated: listPage.requestPaste()
        }
    }
}

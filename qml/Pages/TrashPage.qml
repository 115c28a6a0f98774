import QtQuick 2.15
import QtQuick.Controls 2.15 as Controls
import QtQuick.Layouts 1.15
import com.kelmora.helpers 1.0
import "../Components"
import "../Delegates"

// Deleted tasks, projects, folders and contexts, each kind on a tab of its own while it has
// anything in the trash. Rows can be restored for 14 days; "Empty Trash" ends that at once.
Page {
    id: page

    readonly property var currentListPage: listLoader.item
    property var tabs: []

    function availableTabs() {
        var result = []
        if (TaskHandler.hasDeletedTasks())
            result.push({ "kind": "tasks", "title": qsTr("Tasks") })
        if (ProjectHandler.hasDeletedProjects())
            result.push({ "kind": "projects", "title": qsTr("Projects") })
        if (ProjectHandler.hasDeletedFolders())
            result.push({ "kind": "folders", "title": qsTr("Folders") })
        if (ContextHandler.hasDeletedContexts())
            result.push({ "kind": "contexts", "title": qsTr("Contexts") })
        return result
    }

    // A tab whose list ran empty goes away and the first tab takes over.
    function rebuildTabs() {
        var current = tabBar.currentIndex >= 0 && tabBar.currentIndex < tabs.length ? tabs[tabBar.currentIndex].kind : ""
        var fresh = availableTabs()
        var index = fresh.findIndex(function (tab) { return tab.kind === current })
        tabs = fresh
        tabBar.currentIndex = Math.max(0, index)
        if (listLoader.item && listLoader.item.model)
            listLoader.item.model.update()
    }

    function emptyTrash() {
        popupHelper.showQuestionDialog(qsTr("Empty Trash"), qsTr("Are you sure you want to delete everything for good?"),
                                       function () {
                                           Settings.trashCleanupTimestamp = Math.floor(Date.now() / 1000)
                                           page.rebuildTabs()
                                       }, "", "", false, qsTr("Delete all"))
    }

    function restore(object, kind) {
        if (kind === "projects")
            ProjectHandler.restoreProject(object)
        else if (kind === "folders")
            ProjectHandler.restoreFolder(object)
        else
            ContextHandler.restoreContext(object)
    }

    objectName: "TrashPage"
    sectionHeader: qsTr("Trash")

    Component.onCompleted: rebuildTabs()

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        ListHeader {
            Layout.fillWidth: true
            title: qsTr("Trash")

            Rectangle {
                objectName: "emptyTrashButton"
                anchors.right: parent.right
                anchors.rightMargin: 12
                anchors.verticalCenter: parent.verticalCenter
                visible: page.tabs.length > 0
                width: emptyTrashLabel.implicitWidth + 24
                height: 28
                radius: 14
                color: emptyTrashArea.containsMouse ? Qt.rgba(1, 1, 1, 0.25) : "transparent"
                border.color: appStyle.pages.listHeaderText

                StyledLabel {
                    id: emptyTrashLabel
                    anchors.centerIn: parent
                    text: qsTr("Empty Trash")
                    color: appStyle.pages.listHeaderText
                }

                MouseArea {
                    id: emptyTrashArea
                    anchors.fill: parent
                    hoverEnabled: true
                    onClicked: page.emptyTrash()
                }
            }
        }

        StyledLabel {
            Layout.fillWidth: true
            Layout.margins: 12
            wrapMode: Text.Wrap
            text: qsTr("You can restore tasks, projects, folders and contexts within 14 days after deletion date")
            color: appStyle.pages.placeholderText
        }

        Controls.TabBar {
            id: tabBar
            objectName: "trashTabBar"
            Layout.fillWidth: true
            visible: page.tabs.length > 0
            background: Rectangle {
                color: appStyle.mainWindow.backgroundColor
            }

            Repeater {
                model: page.tabs
                Controls.TabButton {
                    id: tab
                    objectName: "trashTab_" + modelData.kind
                    text: modelData.title
                    contentItem: StyledLabel {
                        text: tab.text
                        horizontalAlignment: Text.AlignHCenter
                        verticalAlignment: Text.AlignVCenter
                        color: tab.checked ? Settings.applicationColor : appStyle.colors.taskName
                        font.pixelSize: 14
                    }
                    background: Rectangle {
                        implicitHeight: 36
                        color: appStyle.mainWindow.backgroundColor

                        Rectangle {
                            anchors.bottom: parent.bottom
                            width: parent.width
                            height: 2
                            color: tab.checked ? Settings.applicationColor : appStyle.pages.splitterColor
                        }
                    }
                }
            }
        }

        Loader {
            id: listLoader
            Layout.fillWidth: true
            Layout.fillHeight: true
            readonly property string kind: page.tabs.length > 0 ? page.tabs[tabBar.currentIndex].kind : ""
            sourceComponent: kind === "" ? emptyTrashText : kind === "tasks" ? taskTrash : objectTrash
        }
    }

    Component {
        id: emptyTrashText

        ListPlaceholder {
            imageName: "trash"
            mainText: qsTr("The trash is empty")
        }
    }

    Component {
        id: taskTrash

        TaskListPage {
            objectName: "trashList"
            trashMode: true
            model: TaskHandler.getDeletedTasks()
        }
    }

    Component {
        id: objectTrash

        ListPage {
            id: objectList
            readonly property bool trashMode: true
            objectName: "trashList"
            dragEnabled: false
            sectionProperty: "stateRole"
            showMainSectionHeader: false
            sectionInfoHash: { "3": { "text": qsTr("Completed") } }
            model: listLoader.kind === "projects" ? ProjectHandler.getDeletedProjects()
                                                  : listLoader.kind === "folders" ? ProjectHandler.getDeletedFolders()
                                                                                  : ContextHandler.getDeletedContexts()
            delegate: Component {
                ObjectListDelegate {
                    onRestoreClicked: page.restore(object, listLoader.kind)
                }
            }
        }
    }

    Connections {
        target: TaskHandler
        function onTaskUpdated() { page.rebuildTabs() }
    }

    Connections {
        target: ProjectHandler
        ignoreUnknownSignals: true
        function onProjectUpdated() { page.rebuildTabs() }
    }

    Connections {
        target: ContextHandler
        ignoreUnknownSignals: true
        function onContextUpdated() { page.rebuildTabs() }
    }
}

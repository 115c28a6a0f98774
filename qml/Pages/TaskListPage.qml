import QtQuick 2.15
import com.kelmora.helpers 1.0
import "../Components"
import "../Delegates"

// A list of tasks, sectioned into the open ones and the completed ones; either section folds away.
ListPage {
    id: taskListPage

    property bool showProjectNamesChain: true
    property bool trashMode: false
    property bool showProjectMenuItem: false
    property string sectionEventCategory: "NB_SECTION_HEADER"
    // Lists that offer other menus for other contents keep this one for their tasks.
    readonly property Component taskEmptySpaceMenu: emptySpaceMenu

    signal addTaskActionClicked()
    signal addProjectActionClicked()

    // A new object, so that whoever keeps the sections across lists hears of the change.
    function toggleSection(section, closeAction, openAction) {
        var sections = Object.assign({}, collapsedSections)
        sections[section] = !sections[section]
        collapsedSections = sections
        FunctionHelper.callIfProvided(AnalyticsManager, "sendEvent",
                                      [sectionEventCategory, sections[section] ? closeAction : openAction])
    }

    function taskSectionInfo() {
        if (trashMode)
            return { "3": { "text": qsTr("Completed") } }
        return {
            "0": { "func": function () { toggleSection("0", "CLOSE_ACTIVE", "OPEN_ACTIVE") }, "hasIcon": true },
            "2": { "text": qsTr("Completed"), "hasIcon": true,
                   "func": function () { toggleSection("2", "CLOSE_COMPLETED", "OPEN_COMPLETED") } }
        }
    }

    function taskCountText() {
        return qsTr("%n task(s)", "", model ? model.activeObjectCount : 0)
    }

    dragEnabled: !trashMode
    showMainSectionHeader: !trashMode
    sectionProperty: "stateRole"
    mainSectionNameUpdater: taskCountText
    mainSectionName: taskCountText()
    sectionInfoHash: taskSectionInfo()

    emptySpaceContextMenu: trashMode ? null : emptySpaceMenu

    delegate: Component {
        TaskListDelegate {
            onAboutToBeEdited: {
                if (!onlyDatesModified && taskListPage.switchToManualModeEnabled)
                    taskListPage.model.switchToManualSortingMode()
            }
        }
    }

    Connections {
        target: taskListPage.model || null
        function onActiveObjectCountChanged() { taskListPage.mainSectionName = taskListPage.taskCountText() }
    }

    Component {
        id: emptySpaceMenu

        NvMenu {
            NvMenuItem {
                label: qsTr("Add Task")
                onActivated: taskListPage.addTaskActionClicked()
            }
            NvMenuItem {
                visible: taskListPage.showProjectMenuItem
                height: visible ? implicitHeight : 0
                label: qsTr("Add Project")
                onActivated: taskListPage.addProjectActionClicked()
            }
            NvMenuItem {
                visible: "object" in Clipboard && Clipboard.object.NAME !== undefined
                height: visible ? implicitHeight : 0
                label: qsTr("Paste")
                onActivated: taskListPage.pasteActionClicked()
            }
        }
    }
}

import QtQuick 2.15
import com.kelmora.helpers 1.0
import "../Components"
import "../Delegates"

// The objects of one level of the project and context pages, or of one day of the daily plan:
// folders, projects and contexts to walk into, and tasks. A list of tasks folds into its open and
// completed sections, a day into the groups of the plan; a level of folders or contexts has none.
TaskListPage {
    id: objectListPage

    property var listObject: null
    property string title
    property string emptyText
    // The day of a daily plan list; null elsewhere.
    property var dayDate: null
    readonly property bool dailyPlan: dayDate !== null
    property bool tasksOnly: false

    signal sortActionClicked()

    function daySectionTitle(section) {
        switch (section) {
        case "0": return qsTr("%n task(s)", "", model.activeTaskCount)
        case "1": return qsTr("%n project(s)", "", model.activeProjectCount)
        case "2": return qsTr("Also available: %n task(s)", "", model.alsoAvailableTaskCount)
        case "3": return qsTr("Also available: %n project(s)", "", model.alsoAvailableProjectCount)
        }
        return qsTr("Completed")
    }

    function daySectionAction(section) {
        return section === "4" ? "COMPLETED" : section < "2" ? "ACTIVE" : "AVAILABLE"
    }

    function daySectionInfo() {
        var info = {}
        ;["0", "1", "2", "3", "4"].forEach(function (section) {
            var action = daySectionAction(section)
            info[section] = { "text": daySectionTitle(section), "hasIcon": true,
                              "func": function () { toggleSection(section, "CLOSE_" + action, "OPEN_" + action) } }
        })
        return info
    }

    function pasteIfHeld() {
        if (pasteActionEnabled)
            pasteActionClicked()
    }

    parentObjectId: listObject && listObject.ID !== undefined ? listObject.ID : ""
    showProjectNamesChain: !tasksOnly
    showProjectMenuItem: dailyPlan
    // Nothing to paste is no paste at all, rather than an error about the kind of the object.
    pasteActionEnabled: Clipboard.object.NAME !== undefined
    sectionEventCategory: dailyPlan ? "DP_SECTION_HEADER" : "NB_SECTION_HEADER"
    sectionProperty: dailyPlan ? "dailyPlanRole" : tasksOnly ? "stateRole" : ""
    showMainSectionHeader: true
    sectionInfoHash: dailyPlan ? daySectionInfo() : taskSectionInfo()
    noActiveObjectsText: dailyPlan ? qsTr("Press + to add a task to this date") : ""
    placeholderMainText: emptyText
    emptyListPlaceholder: emptyLabel
    emptySpaceContextMenu: tasksOnly || dailyPlan ? taskEmptySpaceMenu : pasteMenu
    headerComponent: levelHeader
    delegateFor: function (object) { return object && object.PERIOD === undefined ? objectRow : objectListPage.delegate }

    onAddTaskActionClicked: {
        if (dailyPlan)
            popupHelper.showDailyPlanTaskPopup(dayDate)
        else
            popupHelper.showTaskPopupWithProject(parentObjectId)
    }
    onAddProjectActionClicked: popupHelper.showDailyPlanProjectPopup(dayDate)

    Component {
        id: objectRow

        ObjectListDelegate {
            analyticsCategory: "PR_PROJECT"
            rowMenuEnabled: !objectListPage.dailyPlan
        }
    }

    Component {
        id: emptyLabel

        Item {
            StyledLabel {
                objectName: "emptyListText"
                anchors.centerIn: parent
                width: parent.width - 80
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                text: objectListPage.placeholderMainText
                color: appStyle.pages.placeholderText
            }
        }
    }

    Component {
        id: pasteMenu

        NvMenu {
            objectName: "levelEmptySpaceMenu"

            NvMenuItem {
                objectName: "levelListPaste"
                label: qsTr("Paste")
                available: objectListPage.pasteActionEnabled
                onActivated: objectListPage.pasteIfHeld()
            }
        }
    }

    Component {
        id: levelHeader

        Rectangle {
            id: band
            width: objectListPage.width
            height: appStyle.pages.sectionHeaderHeight + 10
            color: appStyle.pages.listHeaderBackground

            StyledLabel {
                objectName: "levelListTitle"
                anchors.left: band.left
                anchors.leftMargin: 16
                anchors.right: band.right
                anchors.rightMargin: 40
                anchors.verticalCenter: band.verticalCenter
                text: objectListPage.title
                color: appStyle.pages.listHeaderText
                font.pixelSize: 15
                font.bold: true
                elide: Text.ElideRight
            }

            StyledLabel {
                id: menuButton
                objectName: "levelListMenuButton"
                anchors.right: band.right
                anchors.rightMargin: 16
                anchors.verticalCenter: band.verticalCenter
                text: "\u2026"
                color: appStyle.pages.listHeaderText
                font.pixelSize: 20

                MouseArea {
                    anchors.fill: menuButton
                    anchors.margins: -6
                    onClicked: listMenu.popup()
                }
            }

            NvMenu {
                id: listMenu
                objectName: "levelListMenu"

                NvMenuItem {
                    objectName: "levelListSort"
                    label: qsTr("Sort")
                    onActivated: objectListPage.sortActionClicked()
                }
                NvMenuItem {
                    objectName: "levelListMenuPaste"
                    label: qsTr("Paste")
                    available: objectListPage.pasteActionEnabled
                    onActivated: objectListPage.pasteIfHeld()
                }
            }
        }
    }
}

import QtQuick 2.15
import com.kelmora.helpers 1.0
import "../Components"
import "../Delegates"

// What the tool bar's search field finds, as the user types: folders, projects, contexts and tasks,
// with the searched words highlighted in names and memos.
Page {
    id: page

    readonly property var currentListPage: listPage
    readonly property string searchString: SearchHelper.searchString

    function highlight(text) {
        return SearchHelper.highlightSearchString(searchString, UrlHelper.convertToHtmlUrls(text))
    }

    function memoMatches(object) {
        return searchString !== "" && object.MEMO !== undefined && object.MEMO !== null
                && String(object.MEMO).toLowerCase().indexOf(searchString.toLowerCase()) !== -1
    }

    function clearSelection() {
        listPage.clearItemsSelection()
    }

    function openObject(object) {
        var kind = object.FOLDER == true ? "FOLDER" : object.CONTEXT !== undefined ? "PROJECT" : "CONTEXT"
        if (kind === "PROJECT" && object.STATE === COMPLETED_OBJECT_STATE)
            return
        FunctionHelper.callIfProvided(AnalyticsManager, "sendEvent", ["SEARCH_LIST", "OPEN_" + kind])
        SearchHelper.abort()
        if (kind === "CONTEXT")
            sidePanel.openContextPage(object)
        else
            sidePanel.openProjectPage(object)
    }

    objectName: "SearchPage"
    sectionHeader: qsTr("Search")

    ListPage {
        id: listPage
        objectName: "searchList"
        anchors.fill: parent
        model: SearchHelper.model
        headerVisible: false
        switchToManualModeEnabled: false
        dragEnabled: false
        keyboardRangeEnabled: false
        placeholderMainText: qsTr("No items found")
        placeholderImageName: "search"
        delegateFor: function (object) {
            return object.PERIOD !== undefined ? taskRow : objectRow
        }
        onObjectDoubleClicked: {
            if (object.PERIOD === undefined)
                page.openObject(object)
        }
    }

    Component {
        id: taskRow

        TaskListDelegate {
            analyticsCategory: "SEARCH_TASK"
            textDecorator: page.highlight
            memoOpen: page.memoMatches(task)
        }
    }

    Component {
        id: objectRow

        ObjectListDelegate {
            analyticsCategory: kind === "folder" ? "SEARCH_FOLDER" : kind === "project" ? "SEARCH_PROJECT"
                                                                                       : "SEARCH_CONTEXT"
            textDecorator: page.highlight
            memoOpen: page.memoMatches(object)
        }
    }

    Connections {
        target: TaskHandler
        function onTaskAdded() { listPage.model.update() }
        function onTaskUpdated() { listPage.model.update() }
    }

    Connections {
        target: ProjectHandler
        ignoreUnknownSignals: true
        function onProjectAdded() { listPage.model.update() }
        function onProjectUpdated() { listPage.model.update() }
    }

    Connections {
        target: ContextHandler
        ignoreUnknownSignals: true
        function onContextAdded() { listPage.model.update() }
        function onContextUpdated() { listPage.model.update() }
    }

    Connections {
        target: DataManager
        function onSyncActiveChanged(active) {
            if (!active)
                listPage.model.update()
        }
    }
}

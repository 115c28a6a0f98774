import QtQuick 2.15
import com.kelmora.helpers 1.0
import com.kelmora.common 1.0
import QtQuick.Controls 2.15
import "../Components"
import "ObjectClipboard.js" as ObjectClipboard

// The calendar on the left and the list of one day on the right. History entries are dates.
HistoryPage {
    id: page

    property date selectedDate: today()
    property Item currentListPage: null
    // Collapsed sections outlive a change of date, but not the page.
    property var collapsedSections: ({})
    property date knownToday: today()
    readonly property alias navigationElement: calendarColumn

    objectName: "DailyPlanPage"
    sectionHeader: qsTr("Due") + " " + Qt.formatDate(selectedDate, "dd.MM.yyyy")

    // Noon keeps the date the same whichever time zone a conversion passes through.
    function today() {
        var now = new Date()
        return new Date(now.getFullYear(), now.getMonth(), now.getDate(), 12)
    }

    function dayOffset(days) {
        var base = today()
        return new Date(base.getFullYear(), base.getMonth(), base.getDate() + days, 12)
    }

    function sameDay(a, b) {
        return a.getFullYear() === b.getFullYear() && a.getMonth() === b.getMonth() && a.getDate() === b.getDate()
    }

    function dayTitle(date) {
        var format = Settings.applicationLanguage === "ru" ? "d MMMM, dddd" : "MMMM d, dddd"
        return date.toLocaleDateString(Qt.locale(Settings.applicationLanguage), format)
    }

    function emptyDayText(date) {
        if (sameDay(date, today()))
            return qsTr("Here you will find your daily task lists") + "\n" + qsTr("Press + to add a task for Today")
        return qsTr("No tasks for this day yet") + "\n" + qsTr("Press + to add a task to this date")
    }

    function loadListModel(date) {
        Logger.info(">>>>>>Current day changed: " + Qt.formatDate(date, "dd.MM.yyyy"))
        var old = currentListPage
        currentListPage = listPageComponent.createObject(null, {
            "model": TaskHandler.getDayTasks(date),
            "title": dayTitle(date),
            "emptyText": emptyDayText(date),
            "dayDate": date,
            "collapsedSections": collapsedSections
        })
        dayStack.replace(null, currentListPage, {}, StackView.Immediate)
        if (old)
            FunctionHelper.delayFunctionCall(1000, function () { old.destroy() })
        FunctionHelper.callIfProvided(AnalyticsManager, "sendEvent", ["DP_CALENDAR", "SELECT_DATE"])
    }

    function setDate(date) {
        if (sameDay(date, selectedDate)) {
            calendar.showMonthOf(date)
            return
        }
        pushToHistoryStack(date)
        selectedDate = date
    }

    function selectToday() {
        setDate(today())
        FunctionHelper.callIfProvided(AnalyticsManager, "sendEvent", ["DP_CALENDAR", "SELECT_TODAY"])
    }

    function selectTomorrow() {
        setDate(dayOffset(1))
        FunctionHelper.callIfProvided(AnalyticsManager, "sendEvent", ["DP_CALENDAR", "SELECT_TOMORROW"])
    }

    // Keeps a page that stays open over midnight on the current day.
    function updateSelectedDate() {
        if (sameDay(selectedDate, dayOffset(-1)))
            selectToday()
    }

    function selectTask(task, onlySelect, date) {
        var target = date ? date : task && task.DUE ? Helper.toUtcDateTime(task.DUE)
                                                     : task && task.START ? Helper.toUtcDateTime(task.START) : null
        if (!target || isNaN(target.getTime()))
            return
        setDate(new Date(target.getFullYear(), target.getMonth(), target.getDate(), 12))
        if (!task || task.ID === undefined)
            return
        var listPage = currentListPage
        FunctionHelper.callAfterProcessEventQueue(function () {
            var index = listPage.model.getIndexByObjectId(task.ID)
            listPage.setCurrentIndex(index)
            if (!onlySelect && index !== -1)
                popupHelper.showEditTaskPopup(task)
        })
    }

    function handleBackAction() {
        var date = popFromBackHistoryStack()
        if (date !== undefined && typeof date !== "string")
            selectedDate = date
    }

    function handleForwardAction() {
        var date = popFromForwardHistoryStack()
        if (date !== undefined)
            selectedDate = date
    }

    function handleHideNavigationAction() {
        Settings.showCalendarOnDailyPlanPage = !Settings.showCalendarOnDailyPlanPage
        FunctionHelper.callIfProvided(AnalyticsManager, "sendEvent",
                                      ["DP_BAR_TREE", Settings.showCalendarOnDailyPlanPage ? "OPEN_CАLENDAR"
                                                                                          : "CLOSE_CАLENDAR"])
    }

    function wallClock(hours, minutes) {
        return new Date(Date.UTC(selectedDate.getFullYear(), selectedDate.getMonth(), selectedDate.getDate(),
                                 hours, minutes))
    }

    // Dates that exist keep their time on the selected day; a missing due date takes the default time,
    // and a due date never comes before the start.
    function moveDatesToSelectedDay(object) {
        var time = Settings.defaultDueTime.split(":")
        if (object.START)
            object.START = wallClock(new Date(object.START).getUTCHours(), new Date(object.START).getUTCMinutes())
        object.DUE = object.DUE ? wallClock(new Date(object.DUE).getUTCHours(), new Date(object.DUE).getUTCMinutes())
                                : wallClock(Number(time[0]), Number(time[1]))
        if (object.START && object.START > object.DUE)
            object.DUE = object.START
    }

    // A copied project is written over its original rather than cloned: the day's list shows
    // projects by their dates, not copies of them.
    function pasteOnSelectedDay() {
        if (!Clipboard.containsTask && !Clipboard.containsProject) {
            ObjectClipboard.showPasteError(qsTr("One can paste only tasks or projects into this list."))
            return
        }
        var object = ObjectClipboard.heldObject()
        moveDatesToSelectedDay(object)
        if (Clipboard.containsTask) {
            object.PARENT = PredefinedDataHelper.oneStepActionsId
            ObjectClipboard.pasteTask(object)
            return
        }
        var cut = ObjectClipboard.isCut()
        if (cut)
            object.PARENT = ""
        ProjectHandler.updateProject(object)
        if (cut)
            Clipboard.object = {}
    }

    function showSortingPopup(listPage) {
        var popup = FunctionHelper.callIfProvided(popupHelper, "showSortingPopup",
                                                  [Qt.formatDate(selectedDate, "ddMMyyyy"), SortingEnums.ListTypeDailyPlan])
        if (!popup)
            return
        popup.manualModeRequested.connect(listPage.showManualSortingAnimation)
        popup.sortingTypeChanged.connect(listPage.model.sort)
    }

    function refresh() {
        if (currentListPage)
            currentListPage.model.update()
        calendar.updateDayIndicators()
    }

    onSelectedDateChanged: {
        calendar.selectedDate = selectedDate
        calendar.showMonthOf(selectedDate)
        loadListModel(selectedDate)
    }
    Component.onCompleted: {
        pushToHistoryStack(selectedDate)
        loadListModel(selectedDate)
    }
    Component.onDestruction: {
        if (currentListPage)
            currentListPage.destroy()
    }

    Connections {
        target: TaskHandler
        function onTaskAdded() { page.refresh() }
        function onTaskUpdated() { page.refresh() }
    }

    Connections {
        target: ProjectHandler
        function onProjectAdded() { page.refresh() }
        function onProjectUpdated() { page.refresh() }
    }

    Connections {
        target: DataManager
        function onSyncActiveChanged(active) {
            if (!active)
                page.refresh()
        }
        function onRemindersSyncComplete() { page.refresh() }
    }

    // Midnight passes unnoticed by the list; the minute timer notices the new day.
    Timer {
        interval: 60000
        running: true
        repeat: true
        onTriggered: {
            if (!page.sameDay(page.knownToday, page.today())) {
                page.knownToday = page.today()
                page.updateSelectedDate()
            }
        }
    }

    Component {
        id: listPageComponent
        ObjectListPage {
            onPasteActionClicked: page.pasteOnSelectedDay()
            onSortActionClicked: page.showSortingPopup(this)
            onCollapsedSectionsChanged: page.collapsedSections = collapsedSections
        }
    }

    Rectangle {
        anchors.fill: parent
        color: appStyle.mainWindow.backgroundColor
    }

    Item {
        id: calendarColumn
        objectName: "calendarColumn"
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        width: Settings.showCalendarOnDailyPlanPage ? calendar.width + 20 : 0
        clip: true

        Behavior on width {
            NumberAnimation { duration: 300 }
        }

        Rectangle {
            anchors.fill: parent
            color: appStyle.components.sidePanel.backgroundColor
        }

        Column {
            x: 10
            y: 10
            spacing: 14

            StyledCalendar {
                id: calendar
                acceptsTaskDrops: true
                onDateClicked: page.setDate(date)
                onTaskDropped: source.changeDueDate(date)
            }

            StyledLabel {
                text: qsTr("Quick Date Selection")
                color: appStyle.colors.lightGray
                font.pixelSize: 11
            }

            Row {
                spacing: 10

                Button {
                    objectName: "todayButton"
                    text: qsTr("Today")
                    onClicked: page.selectToday()
                }

                Button {
                    objectName: "tomorrowButton"
                    text: qsTr("Tomorrow")
                    onClicked: page.selectTomorrow()
                }
            }
        }

        Rectangle {
            anchors.right: parent.right
            width: 1
            height: parent.height
            color: appStyle.pages.splitterColor
        }
    }

    StackView {
        id: dayStack
        objectName: "dayStack"
        anchors.left: calendarColumn.right
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        clip: true
    }
}

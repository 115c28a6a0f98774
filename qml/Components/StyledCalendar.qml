import QtQuick 2.15
import com.kelmora.helpers 1.0

// A month of days, six weeks from the locale's first day of the week, with the day indicators.
Item {
    id: calendar

    property date selectedDate: new Date()
    property int visibleMonth: selectedDate.getMonth()
    property int visibleYear: selectedDate.getFullYear()
    // The first change of month comes from loading, and keeps the indicators.
    property bool monthChangedOnce: false

    property bool acceptsTaskDrops: false

    signal dateClicked(date date)
    signal taskDropped(var source, date date)

    readonly property date firstShownDate: {
        var first = new Date(visibleYear, visibleMonth, 1, 12)
        var shift = (first.getDay() - Qt.locale().firstDayOfWeek + 7) % 7
        return new Date(visibleYear, visibleMonth, 1 - shift, 12)
    }

    function showMonthOf(date) {
        visibleMonth = date.getMonth()
        visibleYear = date.getFullYear()
    }

    function shiftMonth(months) {
        var first = new Date(visibleYear, visibleMonth + months, 1, 12)
        showMonthOf(first)
    }

    function updateDayIndicators() {
        for (var i = 0; i < days.count; ++i)
            days.itemAt(i).updateIndicator()
    }

    function handleVisibleMonthChange() {
        if (!monthChangedOnce) {
            monthChangedOnce = true
            return
        }
        for (var i = 0; i < days.count; ++i)
            days.itemAt(i).clearIndicator()
        FunctionHelper.callAfterProcessEventQueue(updateDayIndicators)
    }

    objectName: "calendar"
    width: appStyle.popups.calendarWidth
    height: appStyle.popups.calendarHeight
    onFirstShownDateChanged: handleVisibleMonthChange()
    Component.onCompleted: updateDayIndicators()

    CalendarNavigationDelegate {
        id: navigation
        width: parent.width
        month: calendar.visibleMonth
        year: calendar.visibleYear
        onPreviousMonth: calendar.shiftMonth(-1)
        onNextMonth: calendar.shiftMonth(1)
    }

    Row {
        id: weekDays
        anchors.top: navigation.bottom
        anchors.topMargin: 6
        anchors.horizontalCenter: parent.horizontalCenter

        Repeater {
            model: 7
            StyledLabel {
                width: 36
                horizontalAlignment: Text.AlignHCenter
                text: Qt.locale(Settings.applicationLanguage).dayName((Qt.locale().firstDayOfWeek + index) % 7,
                                                                     Locale.ShortFormat)
                color: appStyle.colors.lightGray
                font.pixelSize: 11
            }
        }
    }

    Grid {
        anchors.top: weekDays.bottom
        anchors.topMargin: 4
        anchors.horizontalCenter: parent.horizontalCenter
        columns: 7

        Repeater {
            id: days
            model: 42

            CalendarDayDelegate {
                date: new Date(calendar.firstShownDate.getFullYear(), calendar.firstShownDate.getMonth(),
                               calendar.firstShownDate.getDate() + index, 12)
                selected: sameDay(date, calendar.selectedDate)
                currentMonth: date.getMonth() === calendar.visibleMonth
                acceptsTaskDrops: calendar.acceptsTaskDrops
                onClicked: calendar.dateClicked(date)
                onTaskDropped: calendar.taskDropped(source, date)
            }
        }
    }
}

import QtQuick 2.15
import com.kelmora.helpers 1.0

// One day of the calendar: its number, and above it a dot when the day has active, overdue or
// repeating tasks. The dot's state is asked for asynchronously and may arrive after the cell has
// moved on to another date; such late answers are dropped.
Item {
    id: cell

    property date date
    property bool selected
    property bool currentMonth
    property bool hasIndicator: false
    property bool onlyRepeated: false
    property bool acceptsTaskDrops: false

    signal clicked()
    signal taskDropped(var source)

    readonly property bool isToday: sameDay(date, new Date())
    readonly property bool isPast: !isToday && date < new Date()

    function sameDay(a, b) {
        return a.getFullYear() === b.getFullYear() && a.getMonth() === b.getMonth() && a.getDate() === b.getDate()
    }

    function updateIndicator() {
        var asked = new Date(date)
        FunctionHelper.callAfterProcessEventQueue(function () {
            TaskHandler.requestIndicatorStateForDate(asked, function (active, overdue, repeated) {
                if (!sameDay(asked, cell.date))
                    return
                cell.hasIndicator = active || overdue || repeated
                cell.onlyRepeated = repeated && !active && !overdue
            })
        })
    }

    // A repeating task may only land on a day its rule allows: a weekday of a weekly rule with days,
    // or a day of the month that every month has.
    function dropEnabled(task) {
        var rule = task.PERIOD ? String(task.PERIOD).split(";") : []
        if (rule[0] === "w" && rule.length === 3) {
            var weekday = date.getDay() === 0 ? 7 : date.getDay()
            return rule[2].split(",").indexOf(String(weekday)) !== -1
        }
        if (rule.length > 1 && rule[0] !== "d" && rule[0] !== "w")
            return date.getDate() <= 28
        return true
    }

    function clearIndicator() {
        hasIndicator = false
    }

    function indicatorColor() {
        if (selected || dayArea.containsMouse)
            return appStyle.applicationColor
        if (isToday)
            return appStyle.colors.darkBlue
        if (isPast)
            return "#FB3066"
        if (!currentMonth || onlyRepeated)
            return appStyle.dark ? "#5A5B5D" : appStyle.colors.xLightGray
        return appStyle.dark ? "#D8D8D8" : appStyle.colors.lightGray
    }

    objectName: "calendarDay_" + Qt.formatDate(date, "yyyy-MM-dd")
    width: 36
    height: 40

    Rectangle {
        anchors.centerIn: dayNumber
        width: 30
        height: 30
        radius: 15
        color: cell.selected ? appStyle.applicationColor
                             : dayArea.containsMouse ? appStyle.colors.selectedRow : "transparent"
        border.width: cell.isToday && !cell.selected ? 1 : 0
        border.color: appStyle.applicationColor
    }

    Rectangle {
        objectName: "dayIndicator"
        anchors.horizontalCenter: parent.horizontalCenter
        y: 2
        width: 5
        height: 5
        radius: 2.5
        color: cell.indicatorColor()
        opacity: cell.hasIndicator ? 1 : 0
        visible: opacity > 0

        Behavior on opacity {
            NumberAnimation { duration: 300 }
        }
    }

    StyledLabel {
        id: dayNumber
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: 4
        text: cell.date.getDate()
        font.bold: cell.isToday
        color: cell.selected ? "white"
                             : !cell.currentMonth ? appStyle.colors.lightGray
                                                  : cell.isToday ? appStyle.applicationColor : appStyle.colors.taskName
    }

    DropArea {
        id: dropArea
        anchors.fill: parent
        enabled: cell.acceptsTaskDrops
        keys: ["task"]
        onEntered: drag.accepted = cell.dropEnabled(drag.source.itemObject)
        onDropped: {
            cell.taskDropped(drop.source)
            drop.accept()
        }
    }

    Rectangle {
        anchors.fill: parent
        visible: dropArea.containsDrag
        color: "transparent"
        radius: 6
        border.width: 2
        border.color: appStyle.applicationColor
    }

    MouseArea {
        id: dayArea
        anchors.fill: parent
        hoverEnabled: true
        onClicked: cell.clicked()
    }
}

import QtQuick 2.15
import QtQuick.Controls 2.15
import "../Components"
import "DateRules.js" as DateRules

// The repeat rule: none, every n days, weeks (on chosen week days) or months.
Column {
    id: fragment

    property bool active: false
    property string unit: "none"
    property int count: 1
    property var weekDays: []
    property var startDateTime
    property var dueDateTime
    readonly property bool isDailyOrWeekly: active && (unit === "d" || unit === "w")

    signal datesUpdated(var start, var end)

    function chooseUnit(newUnit) {
        if (newUnit === unit)
            return
        if (unit === "w")
            weekDays = []
        unit = newUnit
        count = 1
        active = newUnit !== "none"
        if (active)
            setDates(startDateTime, dueDateTime)
    }

    function getPeriodString() {
        if (!active || unit === "none")
            return ""
        var period = unit + ";" + count
        if (unit === "w" && weekDays.length > 0)
            period += ";" + weekDays.join(",")
        return period
    }

    function initWithPeriodString(period) {
        var parts = (period || "").split(";")
        if (parts.length < 2)
            return
        unit = parts[0]
        count = Number(parts[1])
        weekDays = parts.length > 2 && parts[2] !== "" ? parts[2].split(",").map(Number) : []
        active = true
    }

    function selectNone() {
        chooseUnit("none")
    }

    function verityDates() {
        var start = startDateTime, due = dueDateTime
        if (unit === "m" && ((DateRules.isValid(start) && start.getUTCDate() > 28)
                             || (DateRules.isValid(due) && due.getUTCDate() > 28))) {
            popupHelper.showMessageDialog(qsTr("Warning"),
                                          qsTr("Unfortunately with monthly repeating tasks it's impossible to set due date to 29, 30 and 31."))
            selectNone()
            return
        }
        if (!DateRules.isValid(start) && !DateRules.isValid(due)) {
            selectNone()
            return
        }
        if (!DateRules.isValid(start) || !DateRules.isValid(due))
            return
        if (unit === "w" && weekDays.length > 0 && weekDays.indexOf(isoWeekday(due)) < 0)
            weekDays = []
    }

    function setDates(start, due) {
        startDateTime = start
        dueDateTime = due
        if (active)
            verityDates()
    }

    function isoWeekday(date) {
        return (date.getUTCDay() + 6) % 7 + 1
    }

    function addDays(date, days) {
        return new Date(date.getTime() + days * 86400000)
    }

    function nextDate(date) {
        if (!DateRules.isValid(date))
            return undefined
        if (unit === "d")
            return addDays(date, count)
        if (unit === "m") {
            var next = new Date(date.getTime())
            next.setUTCMonth(next.getUTCMonth() + count)
            return next
        }
        if (weekDays.length === 0)
            return addDays(date, 7 * count)
        var own = isoWeekday(date)
        if (weekDays.indexOf(own) < 0)
            return undefined
        var sorted = weekDays.slice().sort()
        var later = sorted.filter(function (day) { return day > own })
        if (later.length > 0)
            return addDays(date, later[0] - own)
        return addDays(date, 7 - own + sorted[0] + (count - 1) * 7)
    }

    function nextDateText(template, date) {
        var next = nextDate(date)
        return next ? template.arg(Helper.toUtcString(next)) : ""
    }

    // A chosen week day moves both dates to the nearest chosen day from today, keeping their times.
    function toggleWeekDay(day) {
        var days = weekDays.slice()
        var index = days.indexOf(day)
        if (index >= 0)
            days.splice(index, 1)
        else
            days.push(day)
        weekDays = days.sort()
        var target = DateRules.todayAt("0:00")
        if (days.length > 0) {
            var today = isoWeekday(target)
            var ahead = days.filter(function (d) { return d >= today })
            target = addDays(target, ahead.length > 0 ? ahead[0] - today : 7 - today + days[0])
        }
        var start = DateRules.isValid(startDateTime) ? startDateTime : DateRules.todayAt(Settings.defaultStartTime)
        var due = DateRules.isValid(dueDateTime) ? dueDateTime : DateRules.todayAt(Settings.defaultDueTime)
        startDateTime = DateRules.onDay(target, start.getUTCHours(), start.getUTCMinutes())
        dueDateTime = DateRules.onDay(target, due.getUTCHours(), due.getUTCMinutes())
        datesUpdated(startDateTime, dueDateTime)
    }

    spacing: 8

    StyledLabel {
        text: "Повторение"
        font.bold: true
    }

    StyledLabel {
        objectName: "repetitionExpander"
        text: fragment.active ? qsTr("Repetition settings") : qsTr("Create a repetition")
        color: appStyle.applicationColor

        MouseArea {
            anchors.fill: parent
            onClicked: if (!fragment.active) fragment.chooseUnit("d")
        }
    }

    Row {
        visible: fragment.active
        spacing: 4

        Repeater {
            model: [{ "unit": "none", "text": qsTr("None") }, { "unit": "d", "text": qsTr("Day") },
                    { "unit": "w", "text": qsTr("Week") }, { "unit": "m", "text": qsTr("Month") }]

            Button {
                objectName: "repetitionUnit_" + modelData.unit
                text: modelData.text
                checkable: true
                checked: fragment.unit === modelData.unit
                onClicked: fragment.chooseUnit(modelData.unit)
            }
        }
    }

    Row {
        visible: fragment.active
        spacing: 8

        Button {
            objectName: "repetitionCountMinus"
            text: "−"
            width: 36
            onClicked: fragment.count = Math.max(1, fragment.count - 1)
        }

        StyledLabel {
            objectName: "repetitionCountText"
            anchors.verticalCenter: parent.verticalCenter
            text: fragment.unit === "d" ? qsTr("Every %n day(s)", "", fragment.count)
                : fragment.unit === "w" ? qsTr("Every %n week(s)", "", fragment.count)
                : qsTr("Every %n month(s)", "", fragment.count)
        }

        Button {
            objectName: "repetitionCountPlus"
            text: "+"
            width: 36
            onClicked: fragment.count = Math.min(99, fragment.count + 1)
        }
    }

    Row {
        visible: fragment.active && fragment.unit === "w"
        spacing: 2

        Repeater {
            model: [qsTr("Mon"), qsTr("Tue"), qsTr("Wed"), qsTr("Thu"), qsTr("Fri"), qsTr("Sat"), qsTr("Sun")]

            Button {
                objectName: "weekDay_" + (index + 1)
                width: 52
                text: modelData
                checkable: true
                checked: fragment.weekDays.indexOf(index + 1) >= 0
                onClicked: fragment.toggleWeekDay(index + 1)
            }
        }
    }

    StyledLabel {
        objectName: "nextStartDateLabel"
        visible: fragment.active && text !== ""
        text: fragment.nextDateText(qsTr("Next start date: %1"), fragment.startDateTime)
        color: appStyle.colors.lightGray
    }

    StyledLabel {
        objectName: "nextDueDateLabel"
        visible: fragment.active && text !== ""
        text: fragment.nextDateText(qsTr("Next due date: %1"), fragment.dueDateTime)
        color: appStyle.colors.lightGray
    }
}

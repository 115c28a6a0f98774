import QtQuick 2.15
import "../Components"
import "DateRules.js" as DateRules

// The dates of a daily or weekly task: one day, with a start and an end time on it.
Column {
    id: fragment

    // The day in UTC fields; undefined while the task has no dates.
    property var date
    readonly property var startDateTime: dateAt(startTime)
    readonly property var dueDateTime: dateAt(endTime)

    // Only for a user's change, after the new value is in place.
    signal edited()

    function dateAt(timeEdit) {
        return DateRules.isValid(date) ? DateRules.onDay(date, timeEdit.hours, timeEdit.mins) : undefined
    }

    function initTime(timeEdit, dateTime, defaultTime) {
        if (DateRules.isValid(dateTime)) {
            timeEdit.init(dateTime.getUTCHours(), dateTime.getUTCMinutes())
        } else {
            var time = defaultTime.split(":")
            timeEdit.init(Number(time[0]), Number(time[1]))
        }
    }

    // The due's day wins, since the occurrence ends on it; missing times come from the defaults.
    function setDates(start, due) {
        date = DateRules.isValid(due) ? due : start
        initTime(startTime, start, Settings.defaultStartTime)
        initTime(endTime, due, Settings.defaultDueTime)
    }

    component TimeRow: Item {
        property alias title: label.text

        width: fragment.width
        height: 40

        StyledLabel {
            id: label
            anchors.verticalCenter: parent.verticalCenter
        }
    }

    spacing: 0
    onDateChanged: dayField.dateTime = date

    DateTimeFragment {
        id: dayField
        objectName: "oneDateField"
        width: parent.width
        title: qsTr("Date")
        onEdited: {
            fragment.date = dateTime
            fragment.edited()
        }
    }

    TimeRow {
        title: qsTr("Start time")
        TimeEdit {
            id: startTime
            objectName: "oneDateStartTime"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            onEdited: fragment.edited()
        }
    }

    TimeRow {
        title: qsTr("End time")
        TimeEdit {
            id: endTime
            objectName: "oneDateEndTime"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            onEdited: fragment.edited()
        }
    }
}

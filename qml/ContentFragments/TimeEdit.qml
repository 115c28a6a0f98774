import QtQuick 2.15
import QtQuick.Controls 2.15

// Hours and minutes, stepped with the arrows or the wheel; they stop at their limits.
Row {
    id: edit

    property alias hours: hoursBox.value
    property alias mins: minutesBox.value
    readonly property string time24String: ("0" + hours).slice(-2) + ":" + ("0" + mins).slice(-2)
    readonly property string text: time24String

    signal edited()

    function init(initialHours, initialMinutes) {
        hours = initialHours
        mins = initialMinutes
    }

    function clearFocus() {
        hoursBox.focus = false
        minutesBox.focus = false
    }

    spacing: 4

    SpinBox {
        id: hoursBox
        objectName: "hoursEdit"
        from: 0
        to: 23
        editable: true
        wrap: false
        width: 110
        textFromValue: function (value) { return ("0" + value).slice(-2) }
        onValueModified: edit.edited()
    }

    SpinBox {
        id: minutesBox
        objectName: "minutesEdit"
        from: 0
        to: 59
        editable: true
        wrap: false
        width: 110
        textFromValue: function (value) { return ("0" + value).slice(-2) }
        onValueModified: edit.edited()
    }
}

import QtQuick 2.15
import "../Components"

// Hours, minutes and, where the locale writes "AP", AM/PM. Digits are typed into the focused field:
// a second digit within a second completes a two-digit value when it makes one, and the arrows and
// the wheel step the field up to its limits without wrapping.
Item {
    id: edit

    property bool twelveHourMode: DateFormatHelper.getCurrentLocale().timeFormat(Locale.ShortFormat).indexOf("AP") >= 0
    // The hour as the field shows it: 1 to 12 in twelve-hour mode, else 0 to 23.
    property int hourField: 0
    property bool pm: false
    property int mins: 0
    readonly property int hours: twelveHourMode ? hourField % 12 + (pm ? 12 : 0) : hourField
    readonly property int minHour: twelveHourMode ? 1 : 0
    readonly property int maxHour: twelveHourMode ? 12 : 23
    readonly property string time24String: pad(hours) + ":" + pad(mins)
    readonly property string text: hoursBox.text + ":" + minutesBox.text + (twelveHourMode ? " " + ampmBox.text : "")

    // The digits typed into one field since the typing timer started.
    property Item typingField: null
    property string typedDigits: ""

    signal edited()

    function pad(value) {
        return ("0" + value).slice(-2)
    }

    function init(initialHours, initialMinutes) {
        typingTimer.stop()
        hourField = twelveHourMode ? (initialHours % 12 === 0 ? 12 : initialHours % 12) : initialHours
        pm = initialHours >= 12
        mins = initialMinutes
    }

    function clearFocus() {
        hoursBox.focus = false
        minutesBox.focus = false
        ampmBox.focus = false
    }

    function fields() {
        return twelveHourMode ? [hoursBox, minutesBox, ampmBox] : [hoursBox, minutesBox]
    }

    function walk(field, step) {
        var list = fields()
        var index = Math.max(0, Math.min(list.length - 1, list.indexOf(field) + step))
        list[index].forceActiveFocus()
    }

    function startTyping(field, digit) {
        typingField = field
        typedDigits = String(digit)
        typingTimer.restart()
    }

    function finishTyping() {
        typingTimer.stop()
        typingField = null
    }

    // A first digit that no second digit can follow keeps the field until the timer ends.
    function canStartTwoDigitHour(digit) {
        return twelveHourMode ? digit === 1 : digit <= 2
    }

    function isHour(value) {
        return value >= minHour && value <= maxHour
    }

    function typeHourDigit(digit) {
        if (typingField === hoursBox && typedDigits.length === 1) {
            var first = Number(typedDigits)
            if (!canStartTwoDigitHour(first))
                return
            if (isHour(first * 10 + digit)) {
                hourField = first * 10 + digit
                finishTyping()
                edited()
                return
            }
        }
        if (twelveHourMode && digit === 0)
            return
        startTyping(hoursBox, digit)
        hourField = digit
        edited()
    }

    function typeMinuteDigit(digit) {
        if (typingField === minutesBox && typedDigits.length === 1 && Number(typedDigits) <= 5) {
            mins = Number(typedDigits) * 10 + digit
            finishTyping()
        } else {
            startTyping(minutesBox, digit)
            mins = digit
        }
        edited()
    }

    function step(field, up) {
        finishTyping()
        if (field === ampmBox)
            pm = !pm
        else if (field === hoursBox)
            hourField = Math.max(minHour, Math.min(maxHour, hourField + (up ? 1 : -1)))
        else
            mins = Math.max(0, Math.min(59, mins + (up ? 1 : -1)))
        edited()
    }

    function setPm(value) {
        if (pm === value)
            return
        pm = value
        edited()
    }

    function handleKey(field, event) {
        var digit = event.text.length === 1 ? "0123456789".indexOf(event.text) : -1
        if (digit >= 0 && field === hoursBox)
            typeHourDigit(digit)
        else if (digit >= 0 && field === minutesBox)
            typeMinuteDigit(digit)
        else if (event.key === Qt.Key_Up || event.key === Qt.Key_Down)
            step(field, event.key === Qt.Key_Up)
        else if (event.key === Qt.Key_Left || event.key === Qt.Key_Backtab)
            walk(field, -1)
        else if (event.key === Qt.Key_Right || event.key === Qt.Key_Tab)
            walk(field, 1)
        else if (field === ampmBox && (event.key === Qt.Key_A || event.key === Qt.Key_P))
            setPm(event.key === Qt.Key_P)
        else
            return
        event.accepted = true
    }

    component TimeField: Rectangle {
        id: field

        property string text

        signal doubleClicked()

        width: 44
        height: 32
        radius: 6
        color: activeFocus ? appStyle.applicationColor : appStyle.colors.messageButton
        Keys.onPressed: edit.handleKey(field, event)

        StyledLabel {
            anchors.centerIn: parent
            text: field.text
            font.pixelSize: 15
            color: field.activeFocus ? "white" : appStyle.colors.taskName
        }

        MouseArea {
            anchors.fill: parent
            onPressed: field.forceActiveFocus()
            onDoubleClicked: field.doubleClicked()
        }
    }

    implicitWidth: fieldRow.implicitWidth
    implicitHeight: fieldRow.implicitHeight

    Row {
        id: fieldRow
        spacing: 4

        TimeField {
            id: hoursBox
            objectName: "hoursEdit"
            text: edit.typingField === hoursBox ? edit.typedDigits : edit.pad(edit.hourField)
        }

        StyledLabel {
            anchors.verticalCenter: parent.verticalCenter
            text: ":"
            font.pixelSize: 15
        }

        TimeField {
            id: minutesBox
            objectName: "minutesEdit"
            text: edit.typingField === minutesBox ? edit.typedDigits : edit.pad(edit.mins)
        }

        TimeField {
            id: ampmBox
            objectName: "ampmEdit"
            visible: edit.twelveHourMode
            text: edit.pm ? "PM" : "AM"
            onDoubleClicked: edit.setPm(!edit.pm)
        }
    }

    Timer {
        id: typingTimer
        interval: 1000
        onTriggered: edit.typingField = null
    }

    // The wheel steps the focused field, the minutes when none has the focus.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.NoButton
        onWheel: {
            var focused = edit.fields().filter(function (field) { return field.activeFocus })
            edit.step(focused.length > 0 ? focused[0] : minutesBox, wheel.angleDelta.y > 0)
        }
    }
}

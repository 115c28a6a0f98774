import QtQuick 2.15
import QtQuick.Controls 2.15
import "../Components"
import "../ContentFragments"
import "../ContentFragments/DateRules.js" as DateRules

// A calendar with quick choices and a time, applied as the user goes; choosing a day closes it.
RoundedPopup {
    id: popup

    // The wall-clock value in UTC fields, or undefined for "no date".
    property var initialDateTime
    property bool showOnlyDateEdit: false
    // "H:mm", preloaded in the time edit while there is no date.
    property string defaultTime: "0:00"
    property var selectedDay: null
    property int visibleYear: new Date().getFullYear()
    property int visibleMonth: new Date().getMonth()
    readonly property bool noDate: selectedDay === null
    readonly property var dateTime: noDate ? undefined
                                           : new Date(Date.UTC(selectedDay.getFullYear(), selectedDay.getMonth(),
                                                               selectedDay.getDate(), timeEdit.hours, timeEdit.mins))

    signal dateTimeEdited(var dateTime)

    function setNoDate() {
        selectedDay = null
        var today = new Date()
        visibleYear = today.getFullYear()
        visibleMonth = today.getMonth()
        dateTimeEdited(dateTime)
    }

    function selectDay(day) {
        selectedDay = day
        dateTimeEdited(dateTime)
        hideWithAnimation()
    }

    function dayOffset(days) {
        var today = new Date()
        return new Date(today.getFullYear(), today.getMonth(), today.getDate() + days)
    }

    function shiftMonth(step) {
        var first = new Date(visibleYear, visibleMonth + step, 1)
        visibleYear = first.getFullYear()
        visibleMonth = first.getMonth()
    }

    function hideWithAnimation() {
        destroyPopup()
    }

    objectName: "DateTimeEditPopup"
    destroyOnClick: true
    popupWidth: appStyle.popups.calendarWidth
    popupHeight: column.implicitHeight + 24

    Component.onCompleted: {
        if (!DateRules.isValid(initialDateTime))
            return
        selectedDay = new Date(initialDateTime.getUTCFullYear(), initialDateTime.getUTCMonth(),
                               initialDateTime.getUTCDate())
        visibleYear = selectedDay.getFullYear()
        visibleMonth = selectedDay.getMonth()
    }

    Column {
        id: column
        x: 12
        y: 12
        width: popup.popupWidth - 24
        spacing: 8

        Row {
            width: parent.width

            EditorButton {
                objectName: "previousMonthButton"
                text: "‹"
                onClicked: popup.shiftMonth(-1)
            }

            StyledLabel {
                width: parent.width - 80
                height: parent.height
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                font.bold: true
                text: new Date(popup.visibleYear, popup.visibleMonth, 1).toLocaleDateString(
                          DateFormatHelper.getCurrentLocale(), "MMMM yyyy")
            }

            EditorButton {
                objectName: "nextMonthButton"
                text: "›"
                onClicked: popup.shiftMonth(1)
            }
        }

        Grid {
            id: grid

            // Weeks start on Monday.
            readonly property int leadingDays: (new Date(popup.visibleYear, popup.visibleMonth, 1).getDay() + 6) % 7

            columns: 7

            Repeater {
                model: 42

                Rectangle {
                    readonly property var day: new Date(popup.visibleYear, popup.visibleMonth, index - grid.leadingDays + 1)
                    readonly property bool inMonth: day.getMonth() === popup.visibleMonth
                    readonly property bool selected: popup.selectedDay !== null
                                                     && day.getTime() === popup.selectedDay.getTime()

                    objectName: inMonth ? "calendarDay_" + day.getDate() : ""
                    width: column.width / 7
                    height: 28
                    radius: 14
                    color: selected ? appStyle.applicationColor : "transparent"

                    StyledLabel {
                        anchors.centerIn: parent
                        text: parent.day.getDate()
                        color: parent.selected ? "white" : parent.inMonth ? appStyle.colors.taskName
                                                                          : appStyle.colors.lightGray
                    }

                    MouseArea {
                        anchors.fill: parent
                        onClicked: popup.selectDay(parent.day)
                    }
                }
            }
        }

        Row {
            spacing: 6

            EditorButton {
                objectName: "noDateButton"
                visible: !popup.showOnlyDateEdit
                text: qsTr("No Date")
                onClicked: {
                    popup.setNoDate()
                    popup.hideWithAnimation()
                }
            }

            EditorButton {
                objectName: "todayButton"
                text: qsTr("Today")
                onClicked: popup.selectDay(popup.dayOffset(0))
            }

            EditorButton {
                objectName: "tomorrowButton"
                text: qsTr("Tomorrow")
                onClicked: popup.selectDay(popup.dayOffset(1))
            }
        }

        TimeEdit {
            id: timeEdit
            objectName: "timeEdit"
            visible: !popup.showOnlyDateEdit
            Component.onCompleted: {
                if (DateRules.isValid(popup.initialDateTime))
                    init(popup.initialDateTime.getUTCHours(), popup.initialDateTime.getUTCMinutes())
                else
                    init(Number(popup.defaultTime.split(":")[0]), Number(popup.defaultTime.split(":")[1]))
            }
            onEdited: {
                if (!popup.noDate)
                    popup.dateTimeEdited(popup.dateTime)
            }
        }
    }
}

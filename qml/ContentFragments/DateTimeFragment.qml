import QtQuick 2.15
import "../Components"
import "DateRules.js" as DateRules

// One date row: a plus while empty, else the short date and, with a default time, the time.
Item {
    id: fragment

    property string title
    property var dateTime
    // "H:mm"; empty for a date without time.
    property string defaultTime
    property var editPopup: null

    signal edited(var dateTime)

    function displayText() {
        if (!DateRules.isValid(dateTime))
            return ""
        var locale = DateFormatHelper.getCurrentLocale()
        var day = new Date(dateTime.getUTCFullYear(), dateTime.getUTCMonth(), dateTime.getUTCDate(),
                           dateTime.getUTCHours(), dateTime.getUTCMinutes())
        var date = day.toLocaleDateString(locale, Locale.ShortFormat)
        if (defaultTime === "")
            return date
        return "%1    %2".arg(date).arg(day.toLocaleTimeString(locale, Locale.ShortFormat))
    }

    // Opens at the pointer, above it when the calendar would run out of the window.
    function openEditor(x, y) {
        editPopup = popupHelper.showDateTimeEditPopup({ "initialDateTime": dateTime, "defaultTime": defaultTime || "0:00",
                                                        "showOnlyDateEdit": defaultTime === "", "destroyOnClick": true })
        var point = mapToItem(editPopup, x, y)
        var top = point.y + editPopup.popupHeight > editPopup.height ? point.y - editPopup.popupHeight : point.y
        editPopup.moveTo(point.x, top)
        editPopup.dateTimeEdited.connect(function (value) {
            fragment.dateTime = value
            fragment.edited(value)
        })
        editPopup.aboutToBeDestroyed.connect(function () { fragment.editPopup = null })
    }

    implicitHeight: 36
    implicitWidth: 400

    StyledLabel {
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        text: fragment.title
    }

    StyledLabel {
        objectName: fragment.objectName + "Text"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: DateRules.isValid(fragment.dateTime) ? fragment.displayText() : "+"
        font.pixelSize: DateRules.isValid(fragment.dateTime) ? 13 : 20
        color: DateRules.isValid(fragment.dateTime) ? appStyle.colors.taskName : appStyle.applicationColor
    }

    MouseArea {
        anchors.fill: parent
        cursorShape: Qt.PointingHandCursor
        onClicked: fragment.openEditor(mouse.x, mouse.y)
    }
}

import QtQuick 2.15

// The month and year between the previous and next month buttons. Month names are our own: the
// platform gives Russian month names in the genitive case.
Item {
    id: navigation

    property int month
    property int year

    signal previousMonth()
    signal nextMonth()

    readonly property var englishMonths: ["January", "February", "March", "April", "May", "June", "July",
        "August", "September", "October", "November", "December"]
    readonly property var russianMonths: ["Январь", "Февраль", "Март", "Апрель", "Май", "Июнь", "Июль",
        "Август", "Сентябрь", "Октябрь", "Ноябрь", "Декабрь"]

    height: 36

    ToolBarButton {
        objectName: "previousMonthButton"
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        iconSource: "back.svg"
        onClicked: navigation.previousMonth()
    }

    StyledLabel {
        objectName: "calendarMonthTitle"
        anchors.centerIn: parent
        text: (Settings.applicationLanguage === "ru" ? navigation.russianMonths : navigation.englishMonths)[navigation.month]
              + " " + navigation.year
        font.pixelSize: 15
        font.bold: true
        color: appStyle.colors.taskName
    }

    ToolBarButton {
        objectName: "nextMonthButton"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        iconSource: "forward.svg"
        onClicked: navigation.nextMonth()
    }
}

import QtQuick 2.15
import "../Components"

Page {
    objectName: "DailyPlanPage"
    sectionHeader: qsTr("Daily Plan")

    PagePlaceholder {
        anchors.fill: parent
        iconSource: "daily_plan.svg"
        title: qsTr("Daily Plan")
        text: qsTr("The tasks of the day in one list: what is due, what is overdue, what can be done today and the repeating tasks of the day.")
    }
}

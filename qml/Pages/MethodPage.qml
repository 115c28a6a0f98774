import QtQuick 2.15
import "../Components"

Page {
    objectName: "MethodPage"
    sectionHeader: qsTr("Method")

    PagePlaceholder {
        anchors.fill: parent
        iconSource: "method.svg"
        title: qsTr("Method")
        text: qsTr("A short guide to the method behind Norvel: capture, sort, plan the day and do.")
    }
}

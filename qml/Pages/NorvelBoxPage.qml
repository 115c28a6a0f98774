import QtQuick 2.15
import "../Components"

Page {
    objectName: "NorvelBoxPage"
    sectionHeader: qsTr("Norvel Box")

    PagePlaceholder {
        anchors.fill: parent
        iconSource: "norvel_box.svg"
        title: qsTr("Norvel Box")
        text: qsTr("Everything that comes to mind lands here first: capture a task in a few words and sort it into a project later.")
    }
}

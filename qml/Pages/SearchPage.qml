import QtQuick 2.15
import "../Components"

Page {
    objectName: "SearchPage"
    sectionHeader: qsTr("Search")

    PagePlaceholder {
        anchors.fill: parent
        iconSource: "search.svg"
        title: qsTr("Search")
        text: qsTr("Tasks, projects and contexts whose names or descriptions contain the searched words.")
    }
}

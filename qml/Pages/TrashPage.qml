import QtQuick 2.15
import "../Components"

Page {
    objectName: "TrashPage"
    sectionHeader: qsTr("Trash")

    PagePlaceholder {
        anchors.fill: parent
        iconSource: "trash.svg"
        title: qsTr("Trash")
        text: qsTr("Deleted tasks, projects, folders and contexts, ready to be restored or removed for good.")
    }
}

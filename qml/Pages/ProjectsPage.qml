import QtQuick 2.15

// Folders and projects, walked level by level; a project's tasks come with the project pages.
NavigationPage {
    objectName: "ProjectsPage"
    sectionHeader: qsTr("Projects")
    itemIconSource: "norvel_box.svg"
    emptyText: qsTr("No folders or projects here yet.")

    function childObjects(object) {
        return object ? DataManager.getNestedObjects(object.ID) : DataManager.getRootProjects()
    }

    function hasChildren(object) {
        return object.FOLDER == true
    }
}

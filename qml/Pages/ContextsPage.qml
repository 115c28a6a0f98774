import QtQuick 2.15

// Contexts and the contexts nested in them; their tasks and projects come with the context pages.
NavigationPage {
    objectName: "ContextsPage"
    sectionHeader: qsTr("Contexts")
    itemIconSource: "contexts.svg"
    emptyText: qsTr("No contexts here yet.")

    function childObjects(object) {
        return object ? DataManager.getContextChildren(object.ID) : DataManager.getRootContexts()
    }

    function hasChildren(object) {
        return object.PERIOD === undefined && object.CONTEXT === undefined
                && DataManager.getNestedContextCount(object.ID, false) > 0
    }
}

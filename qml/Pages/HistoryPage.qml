import QtQuick 2.15
import ".."

// A page that remembers where the user went on it, for the tool bar's back and forward buttons.
Page {
    readonly property bool showNavigationButtons: true
    readonly property int backStackDepth: historyStack.backStackDepth
    readonly property int forwardStackDepth: historyStack.forwardStackDepth
    readonly property alias historyStack: historyStack

    function pushToHistoryStack(object) {
        historyStack.push(object)
    }

    function popFromBackHistoryStack() {
        return historyStack.lastBackItem()
    }

    function popFromForwardHistoryStack() {
        return historyStack.lastForwardItem()
    }

    function clearStack() {
        historyStack.clear()
    }

    function removeStringObjects() {
        historyStack.removeStringObjects()
    }

    // Pages with navigation override these three.
    function handleBackAction() {
    }

    function handleForwardAction() {
    }

    function handleHideNavigationAction() {
    }

    HistoryStack {
        id: historyStack
    }
}

import QtQuick 2.15
import QtQuick.Controls 1.4 as Controls1

// Base of every page: panes side by side in a split view with 1-pixel handles.
Item {
    id: page

    property string sectionHeader
    property bool isSplitterVisible: true
    readonly property bool splitViewResizing: splitView.resizing
    readonly property alias splitView: splitView

    function addItemToSplitView(item) {
        splitView.addItem(item)
    }

    Controls1.SplitView {
        id: splitView
        anchors.fill: parent
        orientation: Qt.Horizontal
        handleDelegate: Rectangle {
            width: 1
            color: page.isSplitterVisible ? appStyle.pages.splitterColor : "transparent"
        }
    }
}

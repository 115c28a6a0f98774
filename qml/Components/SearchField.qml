import QtQuick 2.15
import com.kelmora.helpers 1.0
import QtQuick.Controls 2.15

// The search field of the tool bar. Typing searches after a short pause; the search page opens with
// the first letter and stays while the text does.
TextField {
    id: field

    implicitWidth: appStyle.components.toolBar.searchFieldWidth
    implicitHeight: 30
    font.pixelSize: 13
    topPadding: 0
    bottomPadding: 0
    verticalAlignment: TextInput.AlignVCenter
    leftPadding: 30
    placeholderText: qsTr("Search")
    selectByMouse: true
    color: appStyle.colors.taskName
    placeholderTextColor: appStyle.colors.lightGray
    onTextChanged: searchTimer.restart()

    background: Rectangle {
        radius: 6
        color: appStyle.dark ? appStyle.colors.dmMainDarkColor : "white"
        border.color: field.activeFocus ? Settings.applicationColor : appStyle.components.toolBar.borderColor
    }

    ColoredIcon {
        anchors.left: parent.left
        anchors.leftMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        width: 16
        height: 16
        iconSource: "search.svg"
    }

    Timer {
        id: searchTimer
        interval: 200
        onTriggered: {
            if (pageLoader.isActive("SearchPage"))
                FunctionHelper.callIfProvided(pageLoader.currentPage, "clearSelection")
            if (SearchHelper.searchString !== undefined)
                SearchHelper.searchString = field.text
            if (field.text !== "" && !pageLoader.isActive("SearchPage"))
                pageLoader.push("SearchPage")
            else if (field.text === "" && pageLoader.isActive("SearchPage"))
                pageLoader.popToRoot()
        }
    }

    Connections {
        target: SearchHelper
        ignoreUnknownSignals: true
        function onSearchAborted() {
            field.text = ""
            field.focus = false
        }
    }
}

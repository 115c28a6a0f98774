import QtQuick 2.15

// Every colour, size and duration of the interface, in one tree. Colours follow the theme and the
// accent at once, so a theme switch repaints the window without a restart.
QtObject {
    id: style

    readonly property bool dark: GuiManager.isAppInDarkMode
    readonly property color applicationColor: Settings.applicationColor

    readonly property QtObject colors: QtObject {
        readonly property color gray: dark ? "#D8D8D8" : "#58595b"
        readonly property color red: dark ? "#FB3066" : "red"
        readonly property color green: dark ? "#b8e986" : "green"
        readonly property color dmMainDarkColor: "#1E2022"
        readonly property color dmMainLightColor: "#2C2D2F"
        readonly property color blue: "#50a3e8"
        readonly property color darkBlue: "#5187bd"
        readonly property color xLightGray: "#ededed"
        readonly property color lightGray: "#989898"
        readonly property color taskName: dark ? "#f5f5f5" : "#333333"
        readonly property color completedTask: dark ? "#7F7F7F" : "#B1B1B1"
        readonly property color taskDate: dark ? "#B1B1B1" : "#333333"
        readonly property color memoText: dark ? "#B1B1B1" : "#4A4A4A"
        readonly property color selectedRow: dark ? dmMainLightColor : "#EEEEEE"
        readonly property color listRow: dark ? dmMainDarkColor : "white"
        readonly property color messageText: dark ? "#D8D8D8" : "#333333"
        readonly property color messageButton: dark ? dmMainDarkColor : "#EFEFF4"
        readonly property color treeSelection: Qt.rgba(applicationColor.r, applicationColor.g,
                                                       applicationColor.b, 0.08)
    }

    readonly property QtObject mainWindow: QtObject {
        readonly property color backgroundColor: dark ? colors.dmMainDarkColor : "#FFFFFE"
        readonly property color titleBarColor: dark ? colors.dmMainLightColor : "#EDEDED"
        readonly property int minimumWidth: 800
        readonly property int minimumHeight: 530
        readonly property real widthRatio: 0.71
        readonly property real heightRatio: 0.8
    }

    readonly property QtObject components: QtObject {
        readonly property QtObject toolBar: QtObject {
            readonly property color backgroundColor: dark ? colors.dmMainLightColor : "#EDEDED"
            readonly property color borderColor: dark ? "black" : "#D6D6D6"
            readonly property int height: 50
            readonly property int buttonSize: 34
            readonly property int iconSize: 22
            readonly property int searchFieldWidth: 200
        }
        readonly property QtObject sidePanel: QtObject {
            readonly property color backgroundColor: dark ? "#1E2022" : "white"
            readonly property color borderColor: dark ? "black" : "#E4E4E4"
            readonly property color labelColor: dark ? "#D8D8D8" : "#4A4A4A"
            readonly property color selectedColor: dark ? colors.dmMainLightColor : "#F2F2F2"
            readonly property int width: 90
            readonly property int delegateHeight: 85
            readonly property real unlabelledRatio: 0.85
            readonly property int iconSize: 30
            readonly property int badgeSize: 8
            readonly property int tooltipDelay: 400
            readonly property int tooltipOffset: 15
        }
        readonly property QtObject statusBar: QtObject {
            readonly property color backgroundColor: dark ? colors.dmMainLightColor : "white"
            readonly property color textColor: dark ? "#D8D8D8" : "#4A4A4A"
            readonly property color borderColor: dark ? "black" : "#E4E4E4"
            readonly property int height: 16
            readonly property int fontPixelSize: 10
        }
        readonly property QtObject menu: QtObject {
            readonly property color backgroundColor: dark ? colors.dmMainLightColor : "white"
            readonly property color barColor: dark ? colors.dmMainDarkColor : "#F7F7F7"
            readonly property color highlightColor: dark ? "#3A3B3D" : "#E8E8E8"
            readonly property color textColor: dark ? "#D8D8D8" : "#333333"
            readonly property color disabledTextColor: dark ? "#6B6B6B" : "#AAAAAA"
        }
    }

    readonly property QtObject pages: QtObject {
        readonly property color sectionHeaderBackground: dark ? colors.dmMainLightColor : "#EEEEEE"
        readonly property color sectionHeaderText: dark ? "#D8D8D8" : "#4A4A4A"
        readonly property color listHeaderBackground: dark ? colors.dmMainLightColor : applicationColor
        readonly property color listHeaderText: dark ? applicationColor : "white"
        readonly property color splitterColor: dark ? "black" : "#EDEDED"
        readonly property color placeholderText: dark ? "#B1B1B1" : "#7A7A7A"
        readonly property int sectionHeaderHeight: 30
        readonly property int treeRowHeight: 36
        readonly property int busyIndicatorSize: 60
    }

    readonly property QtObject popups: QtObject {
        readonly property color backgroundColor: dark ? colors.dmMainLightColor : "white"
        readonly property color overlayColor: dark ? Qt.rgba(0, 0, 0, 0.5) : Qt.rgba(0, 0, 0, 0.25)
        readonly property int messageWidth: 380
        readonly property int treePopupWidth: 400
        readonly property int treePopupHeight: 500
        readonly property int calendarWidth: 270
        readonly property int calendarHeight: 330
    }

    readonly property QtObject durations: QtObject {
        readonly property int rowHeight: 150
        readonly property int open: 300
        readonly property int close: 100
        readonly property int fade: 300
    }
}

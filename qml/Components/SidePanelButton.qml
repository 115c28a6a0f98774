import QtQuick 2.15
import QtQuick.Controls 2.15

// One entry of the side panel: an icon with its name, or an icon alone whose name shows as a tip.
Item {
    id: button

    property string text
    property string iconSource
    property color iconColor: "transparent"
    property bool selected: false
    property bool hideLabel: false
    property bool showBadge: false
    property bool showErrorIcon: false
    property string iconText
    property int overdueCount: 0
    property int count: 0
    property real contentHeight: 85

    signal clicked()

    // Short buttons shrink their contents instead of cutting them.
    readonly property real contentRatio: contentHeight < 1.2 * content.implicitHeight
                                         ? contentHeight / content.implicitHeight * 0.8 : 1

    Rectangle {
        id: background
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: button.contentHeight
        color: button.selected ? appStyle.components.sidePanel.selectedColor : "transparent"

        Rectangle {
            width: 3
            height: parent.height
            color: Settings.applicationColor
            visible: button.selected
        }

        Column {
            id: content
            anchors.centerIn: parent
            spacing: 4
            scale: (mouseArea.pressed ? 0.95 : 1) * button.contentRatio

            Item {
                anchors.horizontalCenter: parent.horizontalCenter
                width: appStyle.components.sidePanel.iconSize
                height: width

                ColoredIcon {
                    anchors.fill: parent
                    iconSource: button.iconSource
                    iconColor: button.iconColor
                }

                StyledLabel {
                    anchors.centerIn: parent
                    anchors.verticalCenterOffset: 3
                    text: button.iconText
                    visible: text !== ""
                    color: appStyle.dark ? "#D8D8D8" : Settings.applicationColor
                    font.pixelSize: 11
                    font.bold: true
                }

                Rectangle {
                    objectName: button.objectName + "Badge"
                    anchors.right: parent.right
                    anchors.top: parent.top
                    anchors.rightMargin: -3
                    width: appStyle.components.sidePanel.badgeSize
                    height: width
                    radius: width / 2
                    color: appStyle.colors.red
                    visible: button.showBadge
                }

                ColoredIcon {
                    anchors.left: parent.right
                    anchors.top: parent.top
                    width: 14
                    height: 14
                    iconSource: "error.svg"
                    visible: button.showErrorIcon
                }
            }

            StyledLabel {
                anchors.horizontalCenter: parent.horizontalCenter
                // Longer names, as in Russian, shrink to the panel's width instead of being cut.
                width: Math.min(implicitWidth, button.width - 6)
                horizontalAlignment: Text.AlignHCenter
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: 9
                text: button.text
                visible: !button.hideLabel
                color: appStyle.components.sidePanel.labelColor
                font.pixelSize: 12
            }

            Row {
                objectName: button.objectName + "Counters"
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: 3
                visible: button.overdueCount > 0 || button.count > 0

                StyledLabel {
                    objectName: button.objectName + "OverdueCount"
                    text: button.overdueCount
                    visible: button.overdueCount > 0
                    color: appStyle.colors.red
                    font.pixelSize: 11
                }
                StyledLabel {
                    text: "|"
                    visible: button.overdueCount > 0 && button.count > 0
                    color: appStyle.colors.lightGray
                    font.pixelSize: 11
                }
                StyledLabel {
                    objectName: button.objectName + "Count"
                    text: button.count
                    visible: button.count > 0
                    color: Settings.applicationColor
                    font.pixelSize: 11
                }
            }
        }
    }

    MouseArea {
        id: mouseArea
        anchors.fill: background
        hoverEnabled: button.hideLabel
        cursorShape: Qt.PointingHandCursor
        onClicked: button.clicked()
        onEntered: tipTimer.restart()
        onExited: {
            tipTimer.stop()
            tip.close()
        }
    }

    Timer {
        id: tipTimer
        interval: appStyle.components.sidePanel.tooltipDelay
        onTriggered: tip.open()
    }

    ToolTip {
        id: tip
        x: background.width / 2 + appStyle.components.sidePanel.iconSize / 2
           + appStyle.components.sidePanel.tooltipOffset
        y: background.y + (background.height - height) / 2
        text: button.text
    }
}

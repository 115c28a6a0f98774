import QtQuick 2.15
import QtQuick.Controls 2.15
import "../Components"

// One choice of the task status, drawn in the theme's colours: the stock indicator stays light in the
// dark theme, where the unchecked circle looked like the chosen one.
RadioButton {
    id: button

    indicator: Rectangle {
        x: button.leftPadding
        y: (button.height - height) / 2
        implicitWidth: 20
        implicitHeight: 20
        radius: 10
        color: "transparent"
        border.width: 2
        border.color: button.checked ? appStyle.applicationColor : appStyle.colors.lightGray

        Rectangle {
            anchors.centerIn: parent
            width: 10
            height: 10
            radius: 5
            color: appStyle.applicationColor
            visible: button.checked
        }
    }

    contentItem: StyledLabel {
        leftPadding: button.indicator.width + button.spacing
        verticalAlignment: Text.AlignVCenter
        text: button.text
    }
}

import QtQuick 2.15
import QtQuick.Controls 2.15
import "../Components"

// A switch whose text looks like the rest of the form in both themes.
Switch {
    id: control

    padding: 0

    contentItem: StyledLabel {
        leftPadding: control.indicator.width + control.spacing
        verticalAlignment: Text.AlignVCenter
        text: control.text
        color: appStyle.colors.taskName
    }
}

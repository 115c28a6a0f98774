import QtQuick 2.15
import QtQuick.Controls 2.15
import "../Components"

// One choice of the task status, labelled in the theme's text colour.
RadioButton {
    id: button

    contentItem: StyledLabel {
        leftPadding: button.indicator.width + button.spacing
        verticalAlignment: Text.AlignVCenter
        text: button.text
    }
}

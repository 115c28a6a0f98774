import QtQuick 2.15
import QtQuick.Controls 2.15

// A menu entry with its shortcut; no entry acts while a popup is open. Shortcuts and clicks both
// arrive as activated().
MenuItem {
    id: item

    property bool available: true
    property string shortcut
    property string label

    signal activated()

    implicitHeight: 28
    action: Action {
        text: item.label
        enabled: item.available && !popupHelper.isPopupVisible
        onTriggered: item.activated()
    }

    // An action's shortcut only fires while its menu is open; this one works from anywhere.
    Shortcut {
        sequence: item.shortcut
        enabled: item.shortcut !== "" && item.action.enabled
        context: Qt.ApplicationShortcut
        onActivated: item.activated()
    }

    contentItem: Row {
        leftPadding: 6
        spacing: 20

        StyledLabel {
            width: Math.max(implicitWidth, item.availableWidth - shortcutLabel.width - 32)
            text: item.label
            color: item.enabled ? appStyle.components.menu.textColor : appStyle.components.menu.disabledTextColor
        }

        StyledLabel {
            id: shortcutLabel
            text: item.shortcut
            color: appStyle.components.menu.disabledTextColor
        }
    }

    background: Rectangle {
        color: item.highlighted ? appStyle.components.menu.highlightColor : "transparent"
    }
}

import QtQuick 2.15
import QtQuick.Controls 2.15

Menu {
    implicitWidth: 280
    background: Rectangle {
        implicitWidth: 280
        color: appStyle.components.menu.backgroundColor
        border.color: appStyle.components.toolBar.borderColor
        radius: 4
    }
}

import QtQuick 2.15
import "../Components"

Page {
    objectName: "SettingsPage"
    sectionHeader: qsTr("Settings")

    PagePlaceholder {
        anchors.fill: parent
        iconSource: "settings.svg"
        title: qsTr("Settings")
        text: qsTr("Your account and sync, the theme and the language, the daily plan and the reminders.")
    }
}

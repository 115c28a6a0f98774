import QtQuick 2.15

// The one way popups open. Only messages exist so far; the editors come with their pages.
Item {
    id: helper

    property var currentPopup: null
    readonly property bool isPopupVisible: currentPopup !== null

    function showPopup(url, properties) {
        var component = Qt.createComponent(url)
        if (component.status !== Component.Ready) {
            Logger.error("Unable to create popup " + url + ": " + component.errorString())
            return null
        }
        var popup = component.createObject(mainWindow.contentItem, properties || {})
        popup.closed.connect(function () {
            if (currentPopup === popup)
                currentPopup = null
            popup.destroy()
        })
        currentPopup = popup
        popup.open()
        return popup
    }

    // onAccepted runs when the user confirms; closing the message any other way only closes it.
    function showMessage(title, text, onAccepted) {
        var popup = showPopup("qrc:/Popups/MessagePopup.qml", { "title": title, "text": text })
        if (popup && onAccepted)
            popup.accepted.connect(onAccepted)
        return popup
    }
}

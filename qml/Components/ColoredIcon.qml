import QtQuick 2.15

// An icon of the resources in the theme's colour, or in iconColor when one is given. The picture
// provider's results are cached, so a theme or accent change makes the icon ask again.
Image {
    id: icon

    property string iconSource
    property color iconColor: "transparent"

    function iconUrl() {
        if (iconSource === "")
            return ""
        var colorSuffix = iconColor.a > 0 ? "&" + iconColor : ""
        return "image://coloredicon/" + iconSource + colorSuffix
    }

    function reload() {
        source = ""
        source = Qt.binding(iconUrl)
    }

    source: iconUrl()
    cache: false
    smooth: true
    mipmap: true
    fillMode: Image.PreserveAspectFit

    Connections {
        target: GuiManager
        function onAppThemeChanged() { icon.reload() }
    }

    Connections {
        target: Settings
        function onApplicationColorChanged() { icon.reload() }
    }
}

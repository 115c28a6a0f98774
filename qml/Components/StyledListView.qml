import QtQuick 2.15

// The list view under every list page. Rows are made as they scroll into view; the cache keeps a
// screenful around the visible part alive so that scrolling back does not rebuild them.
ListView {
    id: view

    property bool dragActive: false
    property bool transitionsEnabled: true
    readonly property int transitionDuration: 200

    clip: true
    cacheBuffer: 2000
    boundsBehavior: Flickable.StopAtBounds
    interactive: Helper.isTouchDeviceAvailable() || !dragActive
    flickableDirection: Flickable.VerticalFlick
    highlightMoveDuration: 0
    keyNavigationEnabled: false
    currentIndex: -1

    Component.onCompleted: {
        if (Helper.isTouchDeviceAvailable())
            boundsBehavior = Flickable.DragAndOvershootBounds
    }

    add: Transition {
        enabled: view.transitionsEnabled
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: view.transitionDuration }
        NumberAnimation { property: "scale"; from: 0; to: 1; duration: view.transitionDuration }
    }

    remove: Transition {
        NumberAnimation { property: "opacity"; to: 0; duration: view.transitionDuration }
        NumberAnimation { property: "scale"; to: 0; duration: view.transitionDuration }
    }

    // A row displaced while its add transition runs has that transition cut short: the displacement
    // brings it to full size, or it would stay shrunken and invisible.
    displaced: Transition {
        NumberAnimation { properties: "x,y"; duration: view.transitionDuration }
        NumberAnimation { properties: "opacity,scale"; to: 1; duration: view.transitionDuration }
    }

    moveDisplaced: Transition {
        enabled: view.dragActive
        NumberAnimation { properties: "x,y"; duration: view.transitionDuration }
        NumberAnimation { properties: "opacity,scale"; to: 1; duration: view.transitionDuration }
    }
}

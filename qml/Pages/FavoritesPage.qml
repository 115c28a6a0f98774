import QtQuick 2.15
import "../Components"

Page {
    objectName: "FavoritesPage"
    sectionHeader: qsTr("Favorites")

    PagePlaceholder {
        anchors.fill: parent
        iconSource: "favorites.svg"
        title: qsTr("Favorites")
        text: qsTr("The tasks, projects and contexts you mark with a star, gathered in one place.")
    }
}

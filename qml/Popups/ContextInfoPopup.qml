import QtQuick 2.15

// A context, new at the root or inside another context.
ObjectInfoPopup {
    property string parentContextId

    objectName: "ContextInfoPopup"
    kind: "context"
    newTitle: qsTr("New context")
    emptyNameText: qsTr("Please input context name")
    initialValues: ({ "PARENT": parentContextId })
    createObjectFunc: function (context) { return ContextHandler.createContext(context) }
    updateObjectFunc: function (context) { return ContextHandler.updateContext(context) }
    lastCreatedIdFunc: function () { return ContextHandler.lastCreatedContextId() }
    inFavoritesFunc: function (context) { return ContextHandler.inFavorites(context) }
    addToFavoritesFunc: function (context) { ContextHandler.addToFavorites(context) }
    removeFromFavoritesFunc: function (context) { ContextHandler.removeFromFavorites(context) }
}

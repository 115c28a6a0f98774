import QtQuick 2.15
import "../Contents"
import "../ContentFragments/DateRules.js" as DateRules

// The editor of a new or existing project, folder or context. A new object starts from
// initialValues; an edited one keeps whatever the editor does not show.
BaseInfoPopup {
    id: popup

    property string kind
    property string newTitle
    property string emptyNameText
    property var initialValues: ({})
    // Without them the object is no favorite: folders.
    property var inFavoritesFunc: null
    property var addToFavoritesFunc: null
    property var removeFromFavoritesFunc: null
    property var lastCreatedIdFunc

    signal saved(var object)

    function takeFocus() {
        editor.focusName()
    }

    function resultObject() {
        var object = editor.getResultObject()
        var base = objectToEdit || initialValues
        for (var key in base) {
            if (!(key in object))
                object[key] = base[key]
        }
        return object
    }

    function saveFavorite(object, favorite) {
        if (!addToFavoritesFunc)
            return
        if (favorite)
            addToFavoritesFunc(object)
        else if (objectToEdit)
            removeFromFavoritesFunc(object)
    }

    function save() {
        var object = resultObject()
        if (object.NAME === "") {
            popupHelper.showMessageDialog(qsTr("Save Error"), emptyNameText)
            return
        }
        var favorite = object.FAVORITE
        delete object.FAVORITE
        DateRules.correctDates(object)
        if (!saveObjectFunc(object))
            return
        if (!objectToEdit)
            object.ID = lastCreatedIdFunc()
        saveFavorite(object, favorite)
        saved(object)
        hideWithAnimation()
    }

    titleText: objectToEdit ? qsTr("Edit") : newTitle
    onSaveClicked: save()

    content: ObjectInfoContent {
        id: editor
        anchors.fill: parent
        kind: popup.kind
        onRequestSave: popup.save()
    }

    Component.onCompleted: editor.initialize(objectToEdit || initialValues,
                                             !!objectToEdit && !!inFavoritesFunc && inFavoritesFunc(objectToEdit))

    Connections {
        target: contentItem
        function onRequestSave() { popup.save() }
    }
}

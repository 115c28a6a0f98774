import QtQuick 2.15
import QtQuick.Controls 2.15
import "../Components"
import "../ContentFragments"
import "../ContentFragments/DateRules.js" as DateRules

// The fields of a project, folder or context. A project also has a context and dates; folders are
// no favorites. Nothing is written until the popup saves getResultObject().
Item {
    id: content

    // "project", "folder" or "context".
    property string kind
    property string contextId
    property bool favorite: false
    readonly property bool isProject: kind === "project"

    signal requestSave()

    function initialize(object, inFavorites) {
        nameField.text = object.NAME || ""
        memoField.text = object.MEMO || ""
        contextId = object.CONTEXT || ""
        startField.dateTime = DateRules.isValid(object.START) ? object.START : undefined
        dueField.dateTime = DateRules.isValid(object.DUE) ? object.DUE : undefined
        favorite = inFavorites
    }

    function getResultObject() {
        var object = { "NAME": nameField.text.trim(), "MEMO": memoField.text.trim(), "FAVORITE": favorite }
        if (isProject) {
            object.CONTEXT = contextId
            object.START = startField.dateTime
            object.DUE = dueField.dateTime
        }
        return object
    }

    function focusName() {
        nameField.forceActiveFocus()
    }

    Keys.onPressed: {
        if ((event.key === Qt.Key_S || event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
                && (event.modifiers & Qt.ControlModifier)) {
            requestSave()
            event.accepted = true
        }
    }

    Column {
        width: parent.width
        spacing: 12

        StyledLabel { text: qsTr("Name"); font.bold: true }

        TextField {
            id: nameField
            objectName: "objectNameField"
            width: parent.width
            placeholderText: qsTr("Enter name")
            maximumLength: 500
            selectByMouse: true
            color: appStyle.colors.taskName
            Keys.onReturnPressed: content.requestSave()
            Keys.onEnterPressed: content.requestSave()
        }

        ComboBoxFragment {
            id: contextField
            objectName: "projectContextPicker"
            width: parent.width
            visible: content.isProject
            title: qsTr("Context")
            text: content.contextId === "" ? qsTr("No context")
                                           : ContextHandler.getContextNameChain(content.contextId).join(" > ")
            onClicked: {
                var picker = popupHelper.showTreeViewPopup({ "treeModelType": "CONTEXT" })
                picker.placeNear(contextField)
                picker.selectTreeItem(content.contextId)
                picker.itemChanged.connect(function (id) { content.contextId = id })
                picker.aboutToBeDestroyed.connect(function () { content.forceActiveFocus() })
            }
        }

        DateTimeFragment {
            id: startField
            objectName: "projectStartField"
            width: parent.width
            visible: content.isProject
            title: qsTr("Start")
            defaultTime: Settings.defaultStartTime
        }

        DateTimeFragment {
            id: dueField
            objectName: "projectDueField"
            width: parent.width
            visible: content.isProject
            title: qsTr("Due")
            defaultTime: Settings.defaultDueTime
        }

        SwitchFragment {
            objectName: "objectFavoriteSwitch"
            visible: content.kind !== "folder"
            text: content.favorite ? qsTr("Remove from Favorites") : qsTr("Add to Favorites")
            checked: content.favorite
            onToggled: content.favorite = checked
        }

        StyledLabel { text: qsTr("Optional memo"); font.bold: true }

        TextArea {
            id: memoField
            objectName: "objectMemoField"
            width: parent.width
            height: 160
            placeholderText: qsTr("Enter memo")
            wrapMode: TextEdit.Wrap
            color: appStyle.colors.taskName
            onTextChanged: if (length > 1024) remove(1024, length)
            background: Rectangle {
                radius: 6
                color: "transparent"
                border.color: appStyle.components.toolBar.borderColor
            }
        }
    }
}

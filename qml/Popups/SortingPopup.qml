import QtQuick 2.15
import QtQuick.Controls 2.15
import com.kelmora.common 1.0
import "../Components"
import "../ContentFragments"

// How one list is ordered. Manual order is not chosen here: it begins with the first drag in the list.
AnimatedPopup {
    id: popup

    property string listId
    property int listType
    readonly property bool hasStoredOrder: DataManager.hasSortedListInfo(listId, listType)
    readonly property int currentType: hasStoredOrder ? DataManager.getSortingType(listId, listType) : -1

    signal manualModeRequested()
    signal sortingTypeChanged()

    function choose(sortingType) {
        DataManager.setSortedList(listId, listType, sortingType, groupBox.checked)
        sortingTypeChanged()
        hideWithAnimation()
    }

    function chooseDefault() {
        DataManager.deleteSortedList(listId, listType)
        sortingTypeChanged()
        hideWithAnimation()
    }

    function chooseManual() {
        manualModeRequested()
        hideWithAnimation()
    }

    objectName: "SortingPopup"
    popupWidth: 380
    popupHeight: 430
    destroyOnClick: true
    focus: true
    Keys.onEscapePressed: hideWithAnimation()

    Column {
        parent: popup.card
        anchors.centerIn: parent
        width: popup.card.width - 48
        spacing: 10

        StyledLabel {
            objectName: "SortingPopupTitle"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("Sort The List")
            font.pixelSize: 17
            font.bold: true
            bottomPadding: 6
        }

        Repeater {
            model: [{ "name": "sortAlphabetically", "text": qsTr("Alphabetically"), "type": SortingEnums.AlphabeticalType },
                    { "name": "sortOlderFirst", "text": qsTr("By modify date (older first)"), "type": SortingEnums.TimestampAscType },
                    { "name": "sortNewestFirst", "text": qsTr("By modify date (newest first)"), "type": SortingEnums.TimestampDescType },
                    { "name": "sortManually", "text": qsTr("Manual"), "type": SortingEnums.ManualType }]

            EditorButton {
                objectName: modelData.name
                width: parent.width
                text: modelData.text
                checked: popup.currentType === modelData.type
                onClicked: {
                    if (modelData.type === SortingEnums.ManualType)
                        popup.chooseManual()
                    else
                        popup.choose(modelData.type)
                }
            }
        }

        EditorButton {
            objectName: "sortByDefault"
            width: parent.width
            text: qsTr("Sort by default")
            checked: !popup.hasStoredOrder
            onClicked: popup.chooseDefault()
        }

        CheckBox {
            id: groupBox
            objectName: "groupByDateBox"
            text: qsTr("Group by due date (if applicable)")
            checked: popup.hasStoredOrder ? DataManager.getGroupByDateParam(popup.listId, popup.listType) : true
            indicator: Rectangle {
                x: groupBox.leftPadding
                y: (groupBox.height - height) / 2
                implicitWidth: 20
                implicitHeight: 20
                radius: 4
                color: groupBox.checked ? appStyle.applicationColor : "transparent"
                border.width: 2
                border.color: groupBox.checked ? appStyle.applicationColor : appStyle.colors.lightGray

                StyledLabel {
                    anchors.centerIn: parent
                    visible: groupBox.checked
                    text: "✓"
                    color: "white"
                    font.bold: true
                }
            }
            contentItem: StyledLabel {
                leftPadding: groupBox.indicator.width + groupBox.spacing
                verticalAlignment: Text.AlignVCenter
                text: groupBox.text
            }
        }
    }
}

import QtQuick 2.15
import com.kelmora.helpers 1.0
import "../Components"
import "../Pages/ObjectClipboard.js" as ObjectClipboard

// What hangs under the pointer while a row of a list is dragged onto the tree or a calendar day.
// The drop targets call back the functions below, which write the change through the services.
Rectangle {
    id: proxy

    property var itemObject: ({})
    property bool dragging: false
    readonly property string dragKey: ObjectClipboard.kindOf(itemObject)
    readonly property bool completed: itemObject.STATE === COMPLETED_OBJECT_STATE

    function start(object) {
        itemObject = object
        parent = mainWindow.pageContent
        dragging = true
    }

    function follow(area, mouse) {
        if (!dragging)
            return
        var point = area.mapToItem(parent, mouse.x, mouse.y)
        x = point.x - Drag.hotSpot.x
        y = point.y - Drag.hotSpot.y
    }

    function finish() {
        if (!dragging)
            return
        Drag.drop()
        dragging = false
    }

    // The stored record: a row may show an occurrence of a repeating task, or a tree's keys.
    function storedObject() {
        switch (dragKey) {
        case "task": return TaskHandler.getTaskById(itemObject.ID)
        case "context": return ContextHandler.getContextById(itemObject.ID)
        }
        return ProjectHandler.getProjectById(itemObject.ID)
    }

    function changeParent(parentId) {
        var object = storedObject()
        object.PARENT = parentId
        if (dragKey === "task")
            objectUpdater.updateTask(object)
        else if (dragKey === "context")
            objectUpdater.updateContext(object)
        else
            objectUpdater.updateProject(object)
    }

    function changeParentFolder(folderId) {
        changeParent(folderId)
    }

    function changeContext(contextId) {
        var object = storedObject()
        object.CONTEXT = contextId
        if (dragKey === "task")
            objectUpdater.updateTask(object)
        else
            objectUpdater.updateProject(object)
    }

    function wallClock(date, hours, minutes) {
        return new Date(Date.UTC(date.getFullYear(), date.getMonth(), date.getDate(), hours, minutes))
    }

    // The due date moves to the day at its old time; a start at or after it, or of a repeating
    // task, follows (a monthly rule keeps the start's own day of the month).
    function changeDueDate(newDate) {
        var task = storedObject()
        var defaultTime = Settings.defaultDueTime.split(":")
        var oldDue = task.DUE ? new Date(task.DUE) : null
        var hours = oldDue ? oldDue.getUTCHours() : Number(defaultTime[0])
        var minutes = oldDue ? oldDue.getUTCMinutes() : Number(defaultTime[1])
        var due = wallClock(newDate, hours, minutes)
        task.DUE = due
        var start = task.START ? new Date(task.START) : null
        if (start && (start >= due || task.PERIOD)) {
            var monthly = task.PERIOD && task.PERIOD.charAt(0) === "m"
            var startDay = monthly && oldDue && oldDue.getUTCDate() === newDate.getDate()
                    ? new Date(newDate.getFullYear(), newDate.getMonth(), start.getUTCDate(), 12) : newDate
            task.START = wallClock(startDay, start.getUTCHours(), start.getUTCMinutes())
        }
        FunctionHelper.callIfProvided(AnalyticsManager, "sendEvent", ["DP_TASK", "MOVED_TASK_DAY"])
        objectUpdater.updateTask(task)
    }

    objectName: "dragProxy"
    visible: dragging
    width: 260
    height: 36
    radius: 4
    z: 100
    opacity: 0.9
    color: appStyle.colors.selectedRow
    border.color: Settings.applicationColor

    Drag.active: dragging
    Drag.source: proxy
    Drag.keys: [dragKey]
    Drag.hotSpot.x: 20
    Drag.hotSpot.y: height / 2

    StyledLabel {
        anchors.left: parent.left
        anchors.leftMargin: 12
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        text: proxy.itemObject.NAME !== undefined ? proxy.itemObject.NAME : ""
        color: appStyle.colors.taskName
        elide: Text.ElideRight
    }
}

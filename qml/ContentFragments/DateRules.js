.pragma library

// Dates in the interface are JavaScript dates whose UTC fields carry the wall-clock time the user sees.

var reminderMinutes = [0, 5, 15, 30, 60, 120, 180, 1440, 2880]

function isValid(date) {
    return date instanceof Date && !isNaN(date.getTime())
}

function wallNow() {
    var now = new Date()
    return new Date(Date.UTC(now.getFullYear(), now.getMonth(), now.getDate(), now.getHours(), now.getMinutes(),
                             now.getSeconds()))
}

// Today's date (local) at a "H:mm" time.
function todayAt(timeString) {
    var now = new Date()
    var time = timeString.split(":")
    return new Date(Date.UTC(now.getFullYear(), now.getMonth(), now.getDate(), Number(time[0]), Number(time[1])))
}

function onDay(day, hours, minutes) {
    return new Date(Date.UTC(day.getUTCFullYear(), day.getUTCMonth(), day.getUTCDate(), hours, minutes))
}

// A due date earlier than the start pulls the start to the due's day, and to the due itself if still later.
function correctDates(task) {
    if (!isValid(task.START) || !isValid(task.DUE) || task.DUE >= task.START)
        return
    task.START = onDay(task.DUE, task.START.getUTCHours(), task.START.getUTCMinutes())
    if (task.DUE < task.START)
        task.START = new Date(task.DUE.getTime())
}

function reminderTypesAvailable(date) {
    if (!isValid(date))
        return []
    var now = wallNow().getTime()
    var types = []
    for (var type = 0; type < reminderMinutes.length; ++type) {
        if (date.getTime() - reminderMinutes[type] * 60000 > now)
            types.push(type)
    }
    return types
}

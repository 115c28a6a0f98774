pragma Singleton
import QtQuick 2.15

// Runs code once models and views have settled; a zero delay means "after the queued events".
QtObject {
    function callAfterProcessEventQueue(func) {
        delayFunctionCall(0, func)
    }

    function delayFunctionCall(msecs, func) {
        var timer = Helper.getTemporaryTimer()
        timer.interval = msecs
        timer.timeout.connect(func)
        timer.start()
    }

    // Services that later parts of the program provide are published as bare objects until they
    // arrive. A call into one of them then does nothing and answers undefined, as an empty manager
    // would, instead of stopping the script that made it.
    function callIfProvided(service, methodName, args) {
        if (typeof service[methodName] !== "function")
            return undefined
        return service[methodName].apply(service, args || [])
    }
}

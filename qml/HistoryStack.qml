import QtQuick 2.15

// Back and forward history of one page. Entries are navigation objects (null for the root) or
// strings naming a position on another page; a jump to another page cannot be redone.
QtObject {
    property var backStack: []
    property var forwardStack: []
    readonly property int backStackDepth: backStack.length
    readonly property int forwardStackDepth: forwardStack.length

    function push(object) {
        backStack = backStack.concat([object])
        forwardStack = []
    }

    function lastBackItem() {
        if (backStack.length <= 1)
            return undefined
        var back = backStack.slice()
        var popped = back.pop()
        backStack = back
        if (typeof popped === "string")
            return popped
        forwardStack = forwardStack.concat([popped])
        return back[back.length - 1]
    }

    function lastForwardItem() {
        if (forwardStack.length === 0)
            return undefined
        var forward = forwardStack.slice()
        var item = forward.pop()
        forwardStack = forward
        backStack = backStack.concat([item])
        return item
    }

    // At most one string entry is ever pushed, so the first one is the only one.
    function removeStringObjects() {
        for (var i = 0; i < backStack.length; ++i) {
            if (typeof backStack[i] === "string") {
                var back = backStack.slice()
                back.splice(i, 1)
                backStack = back
                return
            }
        }
    }

    function clear() {
        backStack = []
        forwardStack = []
    }
}

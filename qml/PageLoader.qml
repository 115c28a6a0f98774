import QtQuick 2.15
import QtQuick.Controls 2.15

// The page area. The projects and contexts pages are cached with their history for as long as the
// session lasts; every other page is made anew when it is opened and destroyed when it is left.
Item {
    id: loader

    property var cachedPages: ({})
    property bool pageIsLoading: false
    readonly property var currentPage: stack.currentItem
    readonly property var currentListPage: currentPage ? currentPage.currentListPage : undefined

    function pageUrl(pageName) {
        return "qrc:/Pages/" + pageName + ".qml"
    }

    function createPage(pageName) {
        var component = Qt.createComponent(pageUrl(pageName))
        if (component.status !== Component.Ready) {
            Logger.error("Unable to create page " + pageName + ": " + component.errorString())
            return null
        }
        return component.createObject(pageHolder, { "visible": false })
    }

    function isActive(pageName) {
        if (!currentPage)
            return false
        return currentPage.toString().indexOf(pageName) !== -1 || currentPage.objectName === pageName
    }

    function getCachedPage(pageName) {
        return cachedPages[pageUrl(pageName)]
    }

    function createCacheablePage(pageName) {
        if (getCachedPage(pageName))
            return false
        var cache = cachedPages
        cache[pageUrl(pageName)] = createPage(pageName)
        cachedPages = cache
        return true
    }

    function isCached(page) {
        for (var url in cachedPages) {
            if (cachedPages[url] === page)
                return true
        }
        return false
    }

    function replaceWith(pageName, cacheable) {
        pageIsLoading = true
        if (cacheable)
            createCacheablePage(pageName)
        var page = cacheable ? getCachedPage(pageName) : createPage(pageName)
        var leaving = []
        for (var i = 0; i < stack.depth; ++i) {
            var item = stack.get(i, StackView.DontLoad)
            if (item && item !== page && !isCached(item))
                leaving.push(item)
        }
        page.visible = true
        stack.replace(null, page, {}, StackView.Immediate)
        leaving.forEach(function (item) { item.destroy() })
        pageIsLoading = false
    }

    function push(pageName) {
        var page = createPage(pageName)
        page.visible = true
        stack.push(page, {}, StackView.Immediate)
    }

    function popToRoot() {
        stack.pop(null, StackView.Immediate)
    }

    // Drops every cached page, so that no page outlives the data it was made from.
    function clearCache() {
        for (var url in cachedPages) {
            var page = cachedPages[url]
            if (page !== stack.currentItem)
                page.destroy()
        }
        cachedPages = {}
    }

    Item {
        id: pageHolder
        visible: false
    }

    StackView {
        id: stack
        objectName: "pageStack"
        anchors.fill: parent
        visible: !loader.pageIsLoading
    }

    BusyIndicator {
        anchors.centerIn: parent
        width: appStyle.pages.busyIndicatorSize
        height: width
        running: loader.pageIsLoading
        visible: running
    }
}

import QtQuick 2.15
import com.kelmora.helpers 1.0
import QtQuick.Layouts 1.15

// The fixed column of pages on the left. Index -1 lights no button (the trash page).
Rectangle {
    id: panel

    property int currentIndex: 1
    property int previousIndex: 1
    property var counters: []
    property int dayOfMonth: new Date().getDate()
    property bool settingsErrorVisible: false

    readonly property var entries: [
        { itemName: QT_TR_NOOP("Norvel Box"), pageName: "NorvelBoxPage", cacheable: false,
          iconSource: "norvel_box.svg" },
        { itemName: QT_TR_NOOP("Daily Plan"), pageName: "DailyPlanPage", cacheable: false,
          iconSource: "daily_plan.svg", showTextLabel: true },
        { itemName: QT_TR_NOOP("Projects"), pageName: "ProjectsPage", cacheable: true,
          iconSource: "projects.svg" },
        { itemName: QT_TR_NOOP("Contexts"), pageName: "ContextsPage", cacheable: true,
          iconSource: "contexts.svg" },
        { itemName: QT_TR_NOOP("Favorites"), pageName: "FavoritesPage", cacheable: false,
          iconSource: "favorites.svg", hideLabel: true, bottom: true,
          badgeKeyName: "showFavoritesNewBadge", iconColor: "#FFAB40" },
        { itemName: QT_TR_NOOP("Method"), pageName: "MethodPage", cacheable: false,
          iconSource: "method.svg", hideLabel: true, badgeKeyName: "showMethodNewBadge" },
        { itemName: QT_TR_NOOP("Settings"), pageName: "SettingsPage", cacheable: false,
          iconSource: "settings.svg", hideLabel: true, hasErrorIcon: true,
          badgeKeyName: "showAppearanceNewBadge" }
    ]
    readonly property real buttonHeight: {
        var style = appStyle.components.sidePanel
        return height >= entries.length * style.delegateHeight ? style.delegateHeight : height / entries.length
    }

    signal itemClicked(int index)

    function updateIndicators() {
        var now = new Date()
        var norvelBoxId = PredefinedDataHelper.norvelBoxId
        var overdueDay = DataManager.getOverdueDayTaskCount(now)
        var activeDay = DataManager.getActiveDayTaskCount(now)
        counters = [
            { overdue: DataManager.getProjectOverdueTaskCount(norvelBoxId),
              count: DataManager.getProjectTaskCount(norvelBoxId) },
            { overdue: overdueDay, count: activeDay }
        ]
        if (Settings.showAppIconBadge)
            Helper.setBadgeLabelTaskCount(overdueDay + activeDay)
    }

    function updateUI() {
        dayOfMonth = new Date().getDate()
        updateIndicators()
    }

    function indexOfPage(pageName) {
        for (var i = 0; i < entries.length; ++i) {
            if (entries[i].pageName === pageName)
                return i
        }
        return -1
    }

    function loadPage(pageName) {
        currentIndex = indexOfPage(pageName)
    }

    function openNorvelBoxPage(task, onlySelect, historyItem) {
        loadPage("NorvelBoxPage")
        var page = pageLoader.currentPage
        if (task)
            FunctionHelper.callIfProvided(page, "selectTask", [task, onlySelect])
        if (historyItem)
            FunctionHelper.callIfProvided(page, "pushToHistoryStack", [historyItem])
    }

    function openDailyPlanPage(task, onlySelect, date) {
        loadPage("DailyPlanPage")
        FunctionHelper.callIfProvided(pageLoader.currentPage, "selectTask", [task, onlySelect, date])
    }

    function openTreePage(pageName, object, historyItem) {
        pageLoader.createCacheablePage(pageName)
        var page = pageLoader.getCachedPage(pageName)
        FunctionHelper.callIfProvided(page, "hideTreeView")
        page.clearStack()
        page.pushToHistoryStack(historyItem)
        page.selectTreeItem(object)
        loadPage(pageName)
    }

    function openProjectPage(project, task, historyItem) {
        openTreePage("ProjectsPage", project, historyItem)
    }

    function openContextPage(context, task, historyItem) {
        openTreePage("ContextsPage", context, historyItem)
    }

    function switchToContextsPage() {
        loadPage("ContextsPage")
    }

    function openFavoritesPage() {
        loadPage("FavoritesPage")
    }

    function openMethodSyncArticle() {
        loadPage("MethodPage")
        FunctionHelper.callIfProvided(pageLoader.currentPage, "openSyncArticle")
    }

    function openSettingsTab(tabFunction) {
        if (!pageLoader.isActive("SettingsPage"))
            loadPage("SettingsPage")
        FunctionHelper.callAfterProcessEventQueue(function () {
            FunctionHelper.callIfProvided(pageLoader.currentPage, tabFunction)
        })
    }

    function openAccountSettings() {
        openSettingsTab("openAccountTab")
    }

    function openSyncSettings() {
        openSettingsTab("openSyncSettingsTab")
    }

    function seedPredefinedObjects(created, create) {
        if (created() || DataManager.isUserLoggedIn)
            return
        // The demo objects are not the user's own work and must not count towards a rating request.
        GuiManager.suspendRateHandlings()
        create()
        GuiManager.continueRateHandlings()
    }

    function select(index) {
        FunctionHelper.callIfProvided(SearchHelper, "abort")
        itemClicked(index)
        currentIndex = index
    }

    onItemClicked: {
        if (index === 2)
            seedPredefinedObjects(PredefinedDataHelper.predefinedFoldersCreated,
                                  PredefinedDataHelper.createPredefinedFolders)
        else if (index === 3)
            seedPredefinedObjects(PredefinedDataHelper.predefinedContextsCreated,
                                  PredefinedDataHelper.createPredefinedContexts)
        if (index === currentIndex && pageLoader.currentPage)
            FunctionHelper.callIfProvided(pageLoader.currentPage, "resetSelection")
    }

    onCurrentIndexChanged: {
        if (previousIndex === 0)
            Settings.recentProjects = Helper.handleRecentProjectList(Settings.recentProjects,
                { "ID": PredefinedDataHelper.norvelBoxId, "NAME": "Norvel Box" })
        else if (previousIndex === 1)
            updateUI()
        previousIndex = currentIndex
        if (currentIndex >= 0)
            pageLoader.replaceWith(entries[currentIndex].pageName, entries[currentIndex].cacheable)
    }

    Component.onCompleted: updateUI()

    color: appStyle.components.sidePanel.backgroundColor
    implicitWidth: appStyle.components.sidePanel.width

    Rectangle {
        anchors.right: parent.right
        width: 1
        height: parent.height
        color: appStyle.components.sidePanel.borderColor
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Repeater {
            model: panel.entries

            delegate: SidePanelButton {
                readonly property var counter: panel.counters[index] || { overdue: 0, count: 0 }

                objectName: modelData.pageName + "Button"
                Layout.fillWidth: true
                Layout.fillHeight: modelData.bottom === true
                Layout.preferredHeight: contentHeight
                contentHeight: panel.buttonHeight * (modelData.hideLabel ? appStyle.components.sidePanel.unlabelledRatio : 1)
                text: qsTr(modelData.itemName)
                iconSource: modelData.iconSource
                iconColor: modelData.iconColor || "transparent"
                iconText: modelData.showTextLabel ? panel.dayOfMonth : ""
                hideLabel: modelData.hideLabel === true
                selected: panel.currentIndex === index
                showBadge: modelData.badgeKeyName ? Settings[modelData.badgeKeyName] : false
                showErrorIcon: modelData.hasErrorIcon === true && panel.settingsErrorVisible
                overdueCount: counter.overdue
                count: counter.count
                onClicked: panel.select(index)
            }
        }
    }

    Connections {
        target: TaskHandler
        ignoreUnknownSignals: true
        function onTaskAdded() { panel.updateIndicators() }
        function onTaskUpdated() { panel.updateIndicators() }
    }

    Connections {
        target: ProjectHandler
        ignoreUnknownSignals: true
        function onProjectUpdated() { panel.updateIndicators() }
    }

    Connections {
        target: CalendarManager
        ignoreUnknownSignals: true
        function onAccessRevoked() { panel.settingsErrorVisible = true }
    }

    Connections {
        target: DataManager
        function onSyncActiveChanged(active) {
            if (!active)
                panel.updateIndicators()
        }
        function onUserLoggedInChanged() { panel.updateIndicators() }
    }
}

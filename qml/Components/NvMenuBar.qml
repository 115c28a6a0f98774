import QtQuick 2.15
import com.kelmora.helpers 1.0
import QtQuick.Controls 2.15

// The window's menus. Entries whose work belongs to pages act through the current page.
MenuBar {
    id: menuBar

    readonly property string siteUrl: "https://kelmora.com/norvel/?utm_source=norvel_app&utm_medium=help_menu&utm_campaign=desktop"
    readonly property bool russian: Settings.applicationLanguage === "ru"
    readonly property var listPage: pageLoader.currentListPage
    readonly property bool methodArticleVisible: toolBar.methodArticleVisible
    readonly property bool listHasSelection: !!listPage && listPage.hasSelectedListItem === true
    // The search list has no place of its own to paste into.
    readonly property bool listTakesPaste: !!listPage && listPage.pasteActionEnabled === true
                                           && Clipboard.object.NAME !== undefined
                                           && pageLoader.currentPage.objectName !== "SearchPage"

    function openExternal(url, eventName, eventAction) {
        FunctionHelper.callIfProvided(AnalyticsManager, "sendEvent", [eventName, eventAction])
        Qt.openUrlExternally(url)
    }

    function editAction(textEditFunction, contentSignal) {
        if (mainWindow.hasActiveTextEdit)
            mainWindow.activeFocusItem[textEditFunction]()
        else
            contentSignal()
    }

    // Where "Add New Task..." puts the task: the Norvel Box, the selected day, the open project or
    // the open context. Null where the current page has no such place.
    function newTaskPlace() {
        var page = pageLoader.currentPage
        if (!page || methodArticleVisible)
            return null
        if (pageLoader.isActive("NorvelBoxPage"))
            return function () { popupHelper.showNorvelBoxTaskPopup() }
        if (pageLoader.isActive("DailyPlanPage"))
            return function () { popupHelper.showDailyPlanTaskPopup(page.selectedDate) }
        if (pageLoader.isActive("ProjectsPage") && page.currentProjectId)
            return function () { popupHelper.showTaskPopupWithProject(page.currentProjectId) }
        if (pageLoader.isActive("ContextsPage") && page.treeViewCurrentItem)
            return function () { popupHelper.showOneStepActionsTaskPopup(page.treeViewCurrentItem.ID) }
        return null
    }

    function openRecentProject(project) {
        if (project.ID === PredefinedDataHelper.norvelBoxId)
            sidePanel.loadPage("NorvelBoxPage")
        else
            sidePanel.openProjectPage(project)
    }

    background: Rectangle {
        implicitHeight: 26
        color: appStyle.components.menu.barColor
    }

    delegate: MenuBarItem {
        id: barItem

        contentItem: StyledLabel {
            text: barItem.text
            color: barItem.enabled ? appStyle.components.menu.textColor : appStyle.components.menu.disabledTextColor
            verticalAlignment: Text.AlignVCenter
        }
        background: Rectangle {
            color: barItem.highlighted ? appStyle.components.menu.highlightColor : "transparent"
        }
    }

    NvMenu {
        objectName: "fileMenu"
        title: qsTr("File")

        NvMenu {
            objectName: "createMenu"
            title: qsTr("Create")

            NvMenuItem {
                objectName: "addNorvelBoxTaskMenuItem"
                label: qsTr("Add Task to Norvel Box...")
                shortcut: "Ctrl+Shift+N"
                available: !!menuBar.listPage && !menuBar.methodArticleVisible
                onActivated: popupHelper.showNorvelBoxTaskPopup()
            }

            NvMenuItem {
                objectName: "addNewTaskMenuItem"
                label: qsTr("Add New Task...")
                available: menuBar.newTaskPlace() !== null
                onActivated: menuBar.newTaskPlace()()
            }
        }

        NvMenu {
            id: recentMenu
            objectName: "recentProjectsMenu"
            title: qsTr("Recent Projects")

            Instantiator {
                model: Settings.recentProjects
                delegate: NvMenuItem {
                    label: modelData.NAME === "Norvel Box" ? qsTr("Norvel Box") : modelData.NAME
                    onActivated: menuBar.openRecentProject(modelData)
                }
                onObjectAdded: recentMenu.insertItem(index, object)
                onObjectRemoved: recentMenu.removeItem(object)
            }
        }

        NvMenuItem {
            objectName: "syncMenuItem"
            label: qsTr("Sync")
            available: !toolBar.syncing
            onActivated: toolBar.startSync()
        }

        NvMenuItem {
            objectName: "settingsMenuItem"
            label: qsTr("Settings...")
            shortcut: "Ctrl+Shift+S"
            onActivated: sidePanel.loadPage("SettingsPage")
        }

        MenuSeparator {
        }

        NvMenuItem {
            objectName: "closeWindowMenuItem"
            label: qsTr("Close Window")
            shortcut: "Ctrl+W"
            onActivated: mainWindow.close()
        }
    }

    NvMenu {
        objectName: "editMenu"
        title: qsTr("Edit")

        NvMenuItem {
            label: qsTr("Cut")
            shortcut: "Ctrl+X"
            available: mainWindow.hasActiveTextEdit || menuBar.listHasSelection
            onActivated: menuBar.editAction("cut", mainWindow.pageContent.cutClicked)
        }

        NvMenuItem {
            label: qsTr("Copy")
            shortcut: "Ctrl+C"
            available: mainWindow.hasActiveTextEdit || menuBar.listHasSelection
            onActivated: menuBar.editAction("copy", mainWindow.pageContent.copyClicked)
        }

        NvMenuItem {
            label: qsTr("Paste")
            shortcut: "Ctrl+V"
            available: mainWindow.hasActiveTextEdit ? Helper.clipboardHasText : menuBar.listTakesPaste
            onActivated: menuBar.editAction("paste", mainWindow.pageContent.pasteClicked)
        }

        NvMenuItem {
            label: qsTr("Select All")
            shortcut: "Ctrl+A"
            available: mainWindow.hasActiveTextEdit
            onActivated: menuBar.editAction("selectAll", mainWindow.pageContent.selectAllClicked)
        }
    }

    NvMenu {
        objectName: "viewMenu"
        title: qsTr("View")

        NvMenu {
            title: qsTr("Go to")

            NvMenuItem {
                objectName: "goToNorvelBoxMenuItem"
                label: qsTr("Norvel Box")
                shortcut: "Ctrl+1"
                onActivated: sidePanel.select(0)
            }
            NvMenuItem {
                objectName: "goToDailyPlanMenuItem"
                label: qsTr("Daily Plan")
                shortcut: "Ctrl+2"
                onActivated: sidePanel.select(1)
            }
            NvMenuItem {
                objectName: "goToProjectsMenuItem"
                label: qsTr("Projects")
                shortcut: "Ctrl+3"
                onActivated: sidePanel.select(2)
            }
            NvMenuItem {
                objectName: "goToContextsMenuItem"
                label: qsTr("Contexts")
                shortcut: "Ctrl+4"
                onActivated: sidePanel.select(3)
            }
        }

        NvMenuItem {
            readonly property var page: pageLoader.currentPage

            objectName: "navigationPanelMenuItem"
            label: page && page.navigationElement && !page.navigationElement.visible ? qsTr("Show Navigation Panel")
                                                                                     : qsTr("Hide Navigation Panel")
            shortcut: "Ctrl+Shift+T"
            available: page ? page.navigationElement !== undefined && !menuBar.methodArticleVisible : false
            onActivated: page.handleHideNavigationAction()
        }
    }

    NvMenu {
        objectName: "helpMenu"
        title: qsTr("Help")

        NvMenuItem {
            label: qsTr("Open our Website")
            onActivated: menuBar.openExternal(menuBar.siteUrl, "HL_SITE", "OPEN_SITE")
        }

        NvMenuItem {
            label: qsTr("Report an Error...")
            onActivated: menuBar.openExternal("mailto:%1?subject=%2".arg(Settings.supportEmail)
                                              .arg(qsTr("Norvel for Linux v%1").arg(APP_VERSION)),
                                              "HL_ERROR", "REPORT_LETTER")
        }

        MenuSeparator {
        }

        NvMenuItem {
            label: qsTr("Our blog")
            available: menuBar.russian
            visible: menuBar.russian
            height: visible ? implicitHeight : 0
            onActivated: menuBar.openExternal("https://kelmora.com/ru/blog/", "HL_BLOG", "OPEN_PAGE")
        }

        NvMenuItem {
            label: qsTr("Norvel on VK")
            available: menuBar.russian
            visible: menuBar.russian
            height: visible ? implicitHeight : 0
            onActivated: menuBar.openExternal("https://vk.com/norvelapp", "HL_VKONTAKTE", "OPEN_PAGE")
        }

        NvMenuItem {
            label: qsTr("Norvel on Instagram")
            available: menuBar.russian
            visible: menuBar.russian
            height: visible ? implicitHeight : 0
            onActivated: menuBar.openExternal("https://instagram.com/norvelapp", "HL_INSTAGRAM", "OPEN_PAGE")
        }

        NvMenuItem {
            label: qsTr("Norvel on Facebook")
            onActivated: menuBar.openExternal(menuBar.russian ? "https://facebook.com/norvelapp.ru"
                                                              : "https://facebook.com/norvelapp",
                                              "HL_FACEBOOK", "OPEN_PAGE")
        }

        NvMenuItem {
            label: qsTr("Norvel on Twitter")
            onActivated: menuBar.openExternal(menuBar.russian ? "https://twitter.com/norvelapp_ru"
                                                              : "https://twitter.com/norvelapp",
                                              "HL_TWITTER", "OPEN_PAGE")
        }

        NvMenuItem {
            label: qsTr("Subscribe to our news")
            onActivated: menuBar.openExternal(menuBar.russian ? "https://kelmora.com/ru/norvel/news/linux/"
                                                              : "https://kelmora.com/norvel/news/linux/",
                                              "HL_NEWS", "SUBSCRIBE")
        }

        MenuSeparator {
        }

        NvMenuItem {
            label: qsTr("Terms of Use")
            onActivated: Qt.openUrlExternally(menuBar.russian ? "https://kelmora.com/ru/norvel/terms/"
                                                              : "https://kelmora.com/norvel/terms/")
        }

        NvMenuItem {
            label: qsTr("Privacy Policy")
            onActivated: Qt.openUrlExternally(menuBar.russian ? "https://kelmora.com/ru/norvel/privacy/"
                                                              : "https://kelmora.com/norvel/privacy/")
        }
    }
}

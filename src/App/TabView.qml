// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The screens of the tabs above the bar that leads to them: the pink look's own, or the plain one.
FocusScope {
    id: root

    required property ScreenModels screens
    required property int selectedTab
    required property barAppearance appearance
    property AppTheme theme: ThemeEnvironment.theme

    readonly property Item content: pages
    readonly property real barHeight: theme.isKawaiiPink ? kawaiiTabBar.height : standardTabView.height

    /// See ContentTabBar.
    signal tabRequested(int tab, bool byKeyboard)

    /// See TabContent.
    function takeKeyboard(): void {
        pages.takeKeyboard();
    }
    function locate(songId: string, isWebDAV: bool): void {
        pages.locate(songId, isWebDAV);
    }

    TabContent {
        id: pages

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.bottomMargin: root.barHeight
        focus: true
        screens: root.screens
        selectedTab: root.selectedTab
    }
    StandardTabBar {
        id: standardTabView

        objectName: isInUse ? "tabBar" : ""
        isInUse: !root.theme.isKawaiiPink
        width: parent.width
        anchors.bottom: parent.bottom
        tabs: root.screens.content.visibleTabs
        selectedTab: root.selectedTab
        appearance: root.appearance
        onTabRequested: (tab, byKeyboard) => root.tabRequested(tab, byKeyboard)
    }
    KawaiiTabBar {
        id: kawaiiTabBar

        objectName: isInUse ? "tabBar" : ""
        isInUse: root.theme.isKawaiiPink
        width: parent.width
        anchors.bottom: parent.bottom
        tabs: root.screens.content.visibleTabs
        selectedTab: root.selectedTab
        theme: root.theme
        onTabRequested: (tab, byKeyboard) => root.tabRequested(tab, byKeyboard)
    }
}

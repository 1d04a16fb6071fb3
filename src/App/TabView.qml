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

    readonly property real barHeight: bar.height

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
        anchors.bottom: bar.top
        focus: true
        screens: root.screens
        selectedTab: root.selectedTab
    }
    Loader {
        id: bar

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        sourceComponent: root.theme.isKawaiiPink ? kawaiiTabBar : standardTabView
    }

    // A bound component of an item that is made by a loader of another file would not live.
    // qmllint disable unqualified
    Component {
        id: standardTabView

        StandardTabBar {
            objectName: "tabBar"
            tabs: root.screens.content.visibleTabs
            selectedTab: root.selectedTab
            appearance: root.appearance
            onTabRequested: (tab, byKeyboard) => root.tabRequested(tab, byKeyboard)
        }
    }
    Component {
        id: kawaiiTabBar

        KawaiiTabBar {
            objectName: "tabBar"
            tabs: root.screens.content.visibleTabs
            selectedTab: root.selectedTab
            theme: root.theme
            onTabRequested: (tab, byKeyboard) => root.tabRequested(tab, byKeyboard)
        }
    }
    // qmllint enable unqualified
}

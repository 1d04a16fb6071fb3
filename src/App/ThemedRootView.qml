// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The root screen in the current look, in the listener's accent. Another look is another root screen: all that the
/// old one knew, the selected tab, open sheets and pages among it, goes with it. What plays is no part of it.
ThemedAccentColorModifier {
    id: root

    required property ScreenModels screens

    IdentityLoader {
        id: loader

        anchors.fill: parent
        focus: true
        onLoaded: (item as Item).forceActiveFocus(Qt.OtherFocusReason)
        // A bound component could not be made by a loader that is of another file.
        // qmllint disable unqualified
        sourceComponent: ContentView {
            objectName: "contentView"
            screens: root.screens
        }
        // qmllint enable unqualified
    }
    Connections {
        target: ThemeManager

        // Before the items are told of the other look: the screen that goes is not drawn in it.
        function onCurrentThemeTypeChanged(): void {
            root.screens.closeSheetsAndPages();
            loader.identity = ThemeManager.currentThemeType;
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Cadorel

/// The bar of the pink look.
ContentTabBar {
    id: root

    property AppTheme theme: ThemeEnvironment.theme

    implicitHeight: hairline.height + row.height + Metrics.kawaiiTabBarPadding
    buttons: repeater

    Rectangle {
        objectName: "tabBarGround"
        anchors.fill: parent
        color: root.theme.backgroundColor
    }
    Item {
        id: hairline

        objectName: "tabBarHairline"
        width: parent.width
        height: Metrics.kawaiiHairline

        Rectangle {
            width: parent.width
            // Half a pixel would not be drawn where the screen has no finer ones.
            height: Math.max(parent.height, 1 / Screen.devicePixelRatio)
            color: Qt.alpha(root.theme.primaryColor, Metrics.kawaiiHairlineOpacity)
        }
    }
    Row {
        id: row

        readonly property real tabWidth: width / Math.max(1, root.tabs.count)

        x: Metrics.screenMargin
        y: hairline.height
        width: parent.width - 2 * x

        Repeater {
            id: repeater

            model: root.isInUse ? root.tabs : null

            delegate: KawaiiTabButton {
                width: row.tabWidth
                theme: root.theme
                isSelected: root.selectedTab === tab
                onClicked: root.tabRequested(tab, false)
            }
        }
    }
}

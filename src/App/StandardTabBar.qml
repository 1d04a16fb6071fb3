// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// The bar of the plain tab view, drawn as the look has its bars.
ContentTabBar {
    id: root

    required property barAppearance appearance

    // Higher on a desktop of large texts.
    implicitHeight: Math.max(Metrics.tabBarHeight, Metrics.hairline + Metrics.symbol + TextStyles.caption2.line + 2 * Metrics.grid)
    buttons: repeater

    Rectangle {
        objectName: "tabBarGround"
        anchors.fill: parent
        color: root.appearance.background
    }
    Rectangle {
        width: parent.width
        height: Metrics.hairline
        color: root.appearance.separator
    }

    Row {
        id: row

        readonly property real tabWidth: Math.min(root.width / Math.max(1, root.tabs.count), Metrics.tabWidth)

        anchors.horizontalCenter: parent.horizontalCenter
        height: parent.height

        Repeater {
            id: repeater

            model: root.isInUse ? root.tabs : null

            delegate: StandardTabButton {
                width: row.tabWidth
                height: row.height
                appearance: root.appearance
                isSelected: root.selectedTab === tab
                onClicked: root.tabRequested(tab, false)
            }
        }
    }
}

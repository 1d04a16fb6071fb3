// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Cadorel

/// A scroll bar that is seen while the list is longer than its room, and thicker under the mouse.
ScrollBar {
    id: root

    property AppTheme theme: ThemeEnvironment.theme
    property color ink: theme.primaryTextColor

    policy: size < 1 ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
    minimumSize: Metrics.scrollBarShare
    padding: Metrics.focusRing
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: Metrics.scrollBarWidth
        radius: width / 2
        color: Qt.alpha(root.ink, root.pressed || root.hovered ? Metrics.scrollBarHeldOpacity : Metrics.scrollBarOpacity)
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

/// The heart of a favourite, which jumps when it is pressed.
T.AbstractButton {
    id: root

    property bool isFavorite: false
    property AppTheme theme: ThemeEnvironment.theme

    readonly property bool isAnimating: pulse.running

    implicitWidth: Metrics.touchTarget
    implicitHeight: Metrics.touchTarget
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    text: isFavorite ? "取消喜欢" : "喜欢"
    Accessible.name: text
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()
    onClicked: pulse.restart()

    Timer {
        id: pulse

        interval: 300
    }

    background: Rectangle {
        radius: height / 2
        color: root.down ? SystemColors.pressed : root.hovered ? SystemColors.hover : "transparent"

        ThemedFocusRing {
            anchors.margins: 0
            radius: parent.radius
            theme: root.theme
            visible: root.visualFocus
        }
    }
    contentItem: Item {
        SymbolIcon {
            objectName: "glyph"
            anchors.centerIn: parent
            name: root.isFavorite ? AppIcons.favorite.heartFill : AppIcons.favorite.heart
            size: 28
            color: root.isFavorite ? root.theme.primaryColor : root.theme.secondaryTextColor
            scale: root.isAnimating ? 1.3 : 1

            Behavior on scale {
                ResponseSpring {
                    response: 0.3
                    damping: root.isAnimating ? 0.5 : 0.6
                }
            }
        }
    }
}

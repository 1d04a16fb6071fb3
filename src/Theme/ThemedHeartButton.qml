// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// The heart of a favourite, which jumps when it is pressed.
T.AbstractButton {
    id: root

    property bool isFavorite: false
    property AppTheme theme: ThemeEnvironment.theme

    readonly property bool isAnimating: pulse.running

    implicitWidth: Metrics.touchTarget
    implicitHeight: Metrics.touchTarget
    hoverEnabled: true
    // A click leaves the keyboard where it was.
    focusPolicy: Qt.TabFocus
    text: isFavorite ? "取消喜欢" : "喜欢"
    Accessible.name: text
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()
    onClicked: pulse.restart()

    Timer {
        id: pulse

        interval: 300
    }

    background: ThemedHighlight {
        radius: height / 2
        isHovered: root.hovered
        isPressed: root.down
        isFocused: root.visualFocus
        theme: root.theme
    }
    contentItem: Item {
        SymbolIcon {
            objectName: "glyph"
            anchors.centerIn: parent
            name: root.isFavorite ? AppIcons.favorite.heartFill : AppIcons.favorite.heart
            size: 28
            color: root.isFavorite ? root.theme.primaryColor : root.theme.secondaryTextColor
            opacity: root.enabled ? 1 : Metrics.disabledOpacity
            scale: root.isAnimating ? 1.3 : 1

            Behavior on scale {
                // It springs up more lively than it comes back.
                ResponseSpring {
                    response: 0.3
                    damping: root.isAnimating ? 0.5 : 0.6
                }
            }
        }
    }
    StyledToolTip {
        text: root.text
        visible: root.hovered && !root.down
    }
}

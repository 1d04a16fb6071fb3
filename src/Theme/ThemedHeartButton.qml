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
    /// Scale of the heart.
    property real jump: 1

    implicitWidth: Metrics.touchTarget
    implicitHeight: Metrics.touchTarget
    hoverEnabled: true
    // A click leaves the keyboard where it was.
    focusPolicy: Qt.TabFocus
    text: isFavorite ? "取消喜欢" : "喜欢"
    Accessible.name: text
    Accessible.onPressAction: Press.byAction(root)
    Keys.onReturnPressed: event => Press.byKey(root, event)
    Keys.onEnterPressed: event => Press.byKey(root, event)
    // It counts from the first tap: another one makes the jump no longer.
    onClicked: pulse.start()

    // It springs up more lively than it comes back.
    states: State {
        name: "jumping"
        when: root.isAnimating && !Motion.isReduced

        PropertyChanges {
            root.jump: Metrics.heartJump
        }
    }
    transitions: [
        Transition {
            to: "jumping"

            ResponseSpring {
                objectName: "upwards"
                target: root
                property: "jump"
                damping: 0.5
            }
        },
        Transition {
            from: "jumping"

            ResponseSpring {
                objectName: "back"
                target: root
                property: "jump"
            }
        }
    ]

    Timer {
        id: pulse

        interval: Metrics.heartJumpDuration
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
            size: Metrics.heartSymbol
            color: root.isFavorite ? root.theme.primaryColor : root.theme.secondaryTextColor
            scale: root.jump
            opacity: root.enabled ? 1 : Metrics.disabledOpacity
        }
    }
    StyledToolTip {
        text: root.text
        visible: root.hovered && !root.down
    }
}

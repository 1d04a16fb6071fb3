// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// A setting that is on or off: its name, and the switch at the end of the line.
// A screen reader learns what a button is from its type alone.
T.CheckBox {
    id: root

    property AppTheme theme: ThemeEnvironment.theme

    implicitHeight: Math.max(Metrics.buttonHeight, label.implicitHeight + 2 * Metrics.rowSpacing)
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onToggleAction: root.flip()
    Accessible.onPressAction: root.flip()

    /// Without a finger or a mouse. A screen reader may ask for it although the row is disabled.
    function flip(): void {
        if (!enabled)
            return;
        toggle();
        toggled();
    }

    background: ThemedCard {
        cornerRadius: Metrics.controlRadius
        theme: root.theme

        ThemedHighlight {
            anchors.fill: parent
            radius: Metrics.controlRadius
            isHovered: root.hovered
            isPressed: root.down
            isFocused: root.visualFocus
            theme: root.theme
        }
    }

    Item {
        anchors.fill: parent

        StyledText {
            id: label

            anchors.left: parent.left
            anchors.leftMargin: Metrics.cardPadding
            anchors.right: track.left
            anchors.rightMargin: Metrics.cardPadding
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            opacity: root.enabled ? 1 : Metrics.disabledOpacity
        }
        SwitchTrack {
            id: track

            anchors.right: parent.right
            anchors.rightMargin: Metrics.cardPadding
            anchors.verticalCenter: parent.verticalCenter
            isOn: root.checked
            theme: root.theme
        }
    }
}

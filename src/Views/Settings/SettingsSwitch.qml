// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// A row of settings that is on or off: a coloured square with a symbol, its name, and the switch.
// A screen reader learns what a button is from its type alone.
T.CheckBox {
    id: root

    required property string symbol
    required property color squareColor
    property AppTheme theme: ThemeEnvironment.theme

    implicitHeight: Math.max(Metrics.settingsItemHeight, label.implicitHeight + 2 * Metrics.cardPadding)
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    opacity: enabled ? 1 : Metrics.disabledOpacity
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onToggleAction: root.flip()
    Accessible.onPressAction: root.flip()
    Keys.onReturnPressed: event => flipByKey(event)
    Keys.onEnterPressed: event => flipByKey(event)

    function flip(): void {
        if (!enabled)
            return;
        toggle();
        toggled();
    }
    /// Once, however long the key is held down.
    function flipByKey(event: var): void {
        if (!event.isAutoRepeat)
            flip();
    }

    background: ThemedHighlight {
        radius: Metrics.coverRadius
        isHovered: root.hovered
        isPressed: root.down
        isFocused: root.visualFocus
        theme: root.theme
    }
    Item {
        anchors.fill: parent

        SurfaceImage {
            id: square

            anchors.left: parent.left
            anchors.leftMargin: Metrics.cardPadding
            anchors.verticalCenter: parent.verticalCenter
            width: Metrics.settingsSquare
            height: Metrics.settingsSquare
            surface: Surfaces.settingsIcon(root.theme, root.squareColor)

            SymbolIcon {
                anchors.centerIn: parent
                name: root.symbol
                size: Metrics.symbolOf(Metrics.settingsGlyph)
                color: SystemColors.accentInk
            }
        }
        StyledText {
            id: label

            objectName: "itemTitle"
            anchors.left: square.right
            anchors.leftMargin: Metrics.cardPadding
            anchors.right: track.left
            anchors.rightMargin: Metrics.rowSpacing
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            color: root.theme.primaryTextColor
        }
        SwitchTrack {
            id: track

            anchors.right: parent.right
            anchors.rightMargin: Metrics.rowSpacing
            anchors.verticalCenter: parent.verticalCenter
            isOn: root.checked
            theme: root.theme
        }
    }
}

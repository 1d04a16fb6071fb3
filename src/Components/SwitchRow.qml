// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// A setting that is on or off: its name, and the switch at the end of the line. It is a card by itself, or a row of one.
// A screen reader learns what a button is from its type alone.
T.CheckBox {
    id: root

    /// Drawn white on a square of `squareColor` before the name; none when empty.
    property string symbol
    property color squareColor: SystemColors.gray
    /// Somebody else has drawn the card.
    property bool isInCard: false
    property AppTheme theme: ThemeEnvironment.theme

    implicitHeight: Math.max(isInCard ? Metrics.settingsItemHeight : Metrics.buttonHeight, label.implicitHeight + 2 * (isInCard ? Metrics.cardPadding : Metrics.rowSpacing))
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    opacity: enabled ? 1 : Metrics.disabledOpacity
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onToggleAction: root.flip()
    Accessible.onPressAction: root.flip()
    Keys.onReturnPressed: event => flipByKey(event)
    Keys.onEnterPressed: event => flipByKey(event)

    /// Without a finger or a mouse. A screen reader may ask for it although the row is disabled.
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

    background: Item {
        ThemedCard {
            anchors.fill: parent
            cornerRadius: Metrics.controlRadius
            visible: !root.isInCard
            theme: root.theme
        }
        ThemedHighlight {
            anchors.fill: parent
            radius: root.isInCard ? Metrics.coverRadius : Metrics.controlRadius
            isHovered: root.hovered
            isPressed: root.down
            isFocused: root.visualFocus
            theme: root.theme
        }
    }
    Item {
        anchors.fill: parent

        SurfaceImage {
            id: square

            anchors.left: parent.left
            anchors.leftMargin: Metrics.cardPadding
            anchors.verticalCenter: parent.verticalCenter
            width: visible ? Metrics.settingsSquare : 0
            height: Metrics.settingsSquare
            visible: root.symbol !== ""
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
            anchors.leftMargin: square.visible ? Metrics.cardPadding : 0
            anchors.right: track.left
            anchors.rightMargin: Metrics.rowSpacing
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            // As the settings beside it, whose colour is that of the look.
            color: root.symbol !== "" ? root.theme.primaryTextColor : Surfaces.ink(root.theme, root.theme.primaryTextColor)
        }
        SwitchTrack {
            id: track

            anchors.right: parent.right
            anchors.rightMargin: root.isInCard ? Metrics.rowSpacing : Metrics.cardPadding
            anchors.verticalCenter: parent.verticalCenter
            isOn: root.checked
            theme: root.theme
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Cadorel

/// The presets in one line that scrolls. Tab comes to the chosen one, the arrow keys walk, Space and Return choose.
FocusScope {
    id: root

    required property EqualizerViewModel equalizer
    /// Room before the first and after the last one.
    property int sideMargin: Metrics.screenMargin
    property AppTheme theme: ThemeEnvironment.theme

    implicitHeight: Metrics.touchTarget
    Accessible.role: Accessible.Grouping
    Accessible.name: "预设"

    function walkTo(row: int): void {
        const chip = chips.itemAt(row);
        if (chip)
            chip.forceActiveFocus(Qt.TabFocusReason);
    }
    /// Scrolls as little as brings a preset into sight.
    function reveal(row: int): void {
        const chip = chips.itemAt(row);
        if (chip) {
            const end = chip.x + chip.width + 2 * sideMargin;
            scrollTo(Math.max(end - flickable.width, Math.min(chip.x, flickable.contentX)));
        }
    }
    function revealCurrent(): void {
        reveal(equalizer.currentPresetRow);
    }
    function scrollTo(x: real): void {
        flickable.contentX = Math.max(0, Math.min(flickable.contentWidth - flickable.width, x));
    }

    Connections {
        target: root.equalizer

        function onCurrentPresetChanged(): void {
            root.revealCurrent();
        }
    }

    Flickable {
        id: flickable

        objectName: "presetScroller"
        anchors.fill: parent
        contentWidth: line.width + 2 * root.sideMargin
        flickableDirection: Flickable.HorizontalFlick
        boundsBehavior: Flickable.StopAtBounds

        Row {
            id: line

            x: root.sideMargin
            height: parent.height
            spacing: Metrics.rowSpacing

            Repeater {
                id: chips

                model: root.equalizer.presets
                // A screen reader learns what a button is from its type alone. The chip has no `text`: the "&" of a
                // name would make a shortcut of the letter behind it.
                delegate: T.RadioButton {
                    id: chip

                    required property int index
                    required property string name
                    required property string symbol
                    required property string description
                    required property bool isCurrent

                    readonly property color ink: isCurrent ? SystemColors.accentInk : Surfaces.ink(root.theme, root.theme.primaryTextColor)

                    objectName: "preset" + index
                    height: line.height
                    implicitWidth: implicitContentWidth + leftPadding + rightPadding
                    leftPadding: Metrics.cardPadding
                    rightPadding: Metrics.cardPadding
                    checkable: false
                    autoExclusive: false
                    focusPolicy: isCurrent ? Qt.TabFocus : Qt.NoFocus
                    hoverEnabled: true
                    Accessible.name: name
                    Accessible.description: description
                    Accessible.checkable: true
                    Accessible.checked: isCurrent
                    Accessible.onPressAction: Press.byAction(chip)
                    Keys.onReturnPressed: event => Press.byKey(chip, event)
                    Keys.onEnterPressed: event => Press.byKey(chip, event)
                    Keys.onLeftPressed: root.walkTo(index - 1)
                    Keys.onRightPressed: root.walkTo(index + 1)
                    onActiveFocusChanged: {
                        if (activeFocus)
                            root.reveal(index);
                    }
                    onClicked: root.equalizer.choosePreset(index)

                    background: Item {
                        SurfaceImage {
                            anchors.fill: parent
                            anchors.topMargin: Metrics.grid
                            anchors.bottomMargin: Metrics.grid
                            surface: chip.isCurrent ? Surfaces.filledButton(root.theme, root.theme.primaryColor, false, height / 2) : Surfaces.themedCard(root.theme, height / 2)

                            ThemedHighlight {
                                anchors.fill: parent
                                radius: height / 2
                                isHovered: chip.hovered
                                isPressed: chip.down
                                ink: chip.ink
                                theme: root.theme
                            }
                            ThemedFocusRing {
                                controlRadius: parent.height / 2
                                outset: Metrics.focusRing
                                theme: root.theme
                                visible: chip.visualFocus
                            }
                        }
                    }
                    contentItem: Row {
                        spacing: Metrics.grid

                        SymbolIcon {
                            anchors.verticalCenter: parent.verticalCenter
                            name: chip.symbol
                            size: Metrics.symbolSmall
                            color: chip.ink
                        }
                        StyledText {
                            anchors.verticalCenter: parent.verticalCenter
                            text: chip.name
                            style: TextStyles.subheadline
                            font.weight: chip.isCurrent ? Font.DemiBold : Font.Normal
                            color: chip.ink
                        }
                    }
                }
            }
        }
    }
    // A mouse has no other way along the line.
    WheelHandler {
        enabled: flickable.contentWidth > flickable.width
        onWheel: event => root.scrollTo(flickable.contentX - (event.angleDelta.y !== 0 ? event.angleDelta.y : event.angleDelta.x))
    }
}

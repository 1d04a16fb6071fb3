// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Cadorel

/// The five actions about the disc, and the name of the one that is meant. It fills what the disc moves in, and
/// answers the mouse only where its buttons are, while they stay open.
Item {
    id: root

    required property MiniPlayerViewModel miniPlayer
    /// Centre of the disc.
    required property point centre
    /// From 0, closed, to 1; a spring goes a little beyond.
    required property real openness
    property AppTheme theme: ThemeEnvironment.theme

    readonly property point activeOffset: miniPlayer.activeOffset
    readonly property int buttonSize: MiniPlayerGeometry.overlayButtonSize
    /// Of what stands on the ground of a button that is meant.
    readonly property color chosenInk: theme.useNeumorphism ? theme.primaryColor : SystemColors.accentInk

    function pressKey(event: var): void {
        event.accepted = miniPlayer.pressKey(event.key, event.modifiers, event.isAutoRepeat);
    }

    Accessible.role: Accessible.PopupMenu
    Accessible.name: "播放操作"

    // What lies beneath steps back on the side of the fan, so that no text of it mixes with the buttons.
    Rectangle {
        id: veil

        readonly property bool isAtRight: root.centre.x > root.width / 2
        readonly property color far: Qt.alpha(root.theme.backgroundColor, 0)

        objectName: "fanVeil"
        x: isAtRight ? root.width - width : 0
        width: Math.min(root.width, (isAtRight ? root.width - root.centre.x : root.centre.x) + Metrics.fanVeilReach)
        height: root.height
        opacity: Metrics.fanVeilOpacity * Math.min(1, Math.max(0, root.openness))
        gradient: Gradient {
            orientation: Gradient.Horizontal

            GradientStop {
                position: 0
                color: veil.isAtRight ? veil.far : root.theme.backgroundColor
            }
            GradientStop {
                position: veil.isAtRight ? 0.4 : 0.6
                color: root.theme.backgroundColor
            }
            GradientStop {
                position: 1
                color: veil.isAtRight ? root.theme.backgroundColor : veil.far
            }
        }
    }
    Repeater {
        model: root.miniPlayer.fan

        T.AbstractButton {
            id: overlayBadge

            required property int index
            required property string symbol
            required property string label
            required property point offset
            required property bool isActive

            objectName: "fanButton" + index
            x: root.centre.x + root.openness * offset.x - width / 2
            y: root.centre.y + root.openness * offset.y - height / 2
            // The one that is meant lies over its neighbours.
            z: isActive ? 1 : 0
            width: root.buttonSize
            height: root.buttonSize
            opacity: Math.min(1, Math.max(0, root.openness))
            scale: isActive && !Motion.isReduced ? Metrics.chosenScale : 1
            enabled: root.miniPlayer.isFanPinned
            hoverEnabled: true
            focusPolicy: Qt.NoFocus
            containmentMask: RoundTouchArea {
                diameter: root.buttonSize
            }
            text: label
            Accessible.name: label
            Accessible.onPressAction: Press.byAction(overlayBadge)
            onHoveredChanged: if (hovered) root.miniPlayer.highlight(index)
            onClicked: root.miniPlayer.choose(index)
            // A button of its own accord would click once more for each repeat of a key that is held down.
            Keys.onSpacePressed: event => root.pressKey(event)
            Keys.onReturnPressed: event => root.pressKey(event)
            Keys.onEnterPressed: event => root.pressKey(event)
            // A screen reader says where the arrow keys have gone.
            onIsActiveChanged: if (isActive && enabled) forceActiveFocus(Qt.OtherFocusReason)

            Behavior on scale {
                ResponseSpring {
                    response: 0.2
                    damping: 0.6
                }
            }

            background: Item {
                SurfaceImage {
                    objectName: "badge"
                    anchors.fill: parent
                    surface: Surfaces.themedCard(root.theme, root.buttonSize / 2)
                    visible: !overlayBadge.isActive
                }
                SurfaceImage {
                    objectName: "chosenBadge"
                    anchors.fill: parent
                    surface: Surfaces.playButton(root.theme, root.buttonSize)
                    visible: overlayBadge.isActive
                }
            }
            contentItem: Item {
                SymbolIcon {
                    objectName: "glyph"
                    anchors.centerIn: parent
                    name: overlayBadge.symbol
                    size: Metrics.glyphOf(root.buttonSize)
                    color: overlayBadge.isActive ? root.chosenInk : root.theme.primaryTextColor
                }
            }
        }
    }
    // What the right button and the menu key bring up leads to more than the song.
    T.AbstractButton {
        id: queueButton

        readonly property point place: MiniPlayerGeometry.queuePlace(root.centre, root.miniPlayer.isQueueBeneath, width, Qt.size(root.width, root.height))
        readonly property bool isChosen: root.miniPlayer.isQueueChosen
        readonly property surface surface: Surfaces.themedCard(root.theme, height / 2)

        objectName: "fanQueueButton"
        x: Math.round(place.x)
        y: Math.round(place.y)
        width: queueLabel.implicitWidth + 2 * Metrics.screenMargin
        height: MiniPlayerGeometry.queueButtonHeight
        opacity: Math.min(1, Math.max(0, root.openness))
        visible: root.miniPlayer.isFanPinned
        hoverEnabled: true
        focusPolicy: Qt.NoFocus
        text: "播放队列"
        Accessible.name: text
        Accessible.onPressAction: Press.byAction(queueButton)
        onHoveredChanged: if (hovered) root.miniPlayer.highlightQueue()
        onClicked: root.miniPlayer.chooseQueue()
        onIsChosenChanged: if (isChosen && visible) forceActiveFocus(Qt.OtherFocusReason)
        Keys.onSpacePressed: event => root.pressKey(event)
        Keys.onReturnPressed: event => root.pressKey(event)
        Keys.onEnterPressed: event => root.pressKey(event)

        background: Item {
            SurfaceImage {
                anchors.fill: parent
                surface: queueButton.surface
            }
            ThemedHighlight {
                anchors.fill: parent
                radius: height / 2
                isHovered: queueButton.isChosen
                isPressed: queueButton.down
                theme: root.theme
            }
            ThemedFocusRing {
                controlRadius: queueButton.height / 2
                theme: root.theme
                visible: queueButton.isChosen
            }
        }
        contentItem: Item { // qmllint disable deferred-property-id
            Row {
                id: queueLabel

                anchors.centerIn: parent
                spacing: Metrics.rowSpacing

                SymbolIcon {
                    anchors.verticalCenter: parent.verticalCenter
                    name: AppIcons.music.queue
                    size: Metrics.symbolSmall
                    color: root.theme.primaryTextColor
                }
                StyledText {
                    anchors.verticalCenter: parent.verticalCenter
                    text: queueButton.text
                    style: TextStyles.subheadline
                    font.weight: Font.DemiBold
                    color: Surfaces.textOn(root.theme, queueButton.surface, root.theme.primaryTextColor)
                }
            }
        }
    }
    SurfaceImage {
        id: bubble

        readonly property point place: MiniPlayerGeometry.labelPlace(root.centre, root.activeOffset, Qt.size(width, height), Qt.size(root.width, root.height))
        /// Where there is no room beside the button, the one to the queue may stand there already.
        readonly property bool isAside: queueButton.visible && place.y < queueButton.y + queueButton.height && place.y + height > queueButton.y && place.x < queueButton.x + queueButton.width && place.x + width > queueButton.x

        objectName: "fanLabel"
        x: Math.round(place.x)
        y: Math.round(place.y) + (isAside ? (place.y > root.centre.y ? 1 : -1) * (queueButton.height + Metrics.rowSpacing) : 0)
        z: 2
        width: bubbleText.implicitWidth + 2 * Metrics.cardPadding
        height: bubbleText.implicitHeight + Metrics.rowSpacing
        surface: Surfaces.themedCard(root.theme, height / 2)
        visible: root.miniPlayer.activeLabel !== "" && root.openness > 0

        StyledText {
            id: bubbleText

            objectName: "fanLabelText"
            anchors.centerIn: parent
            text: root.miniPlayer.activeLabel
            style: TextStyles.subheadline
            font.weight: Font.DemiBold
            color: Surfaces.textOn(root.theme, bubble.surface, root.theme.primaryTextColor)
            Accessible.ignored: true
        }
    }
}

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

    Accessible.role: Accessible.PopupMenu
    Accessible.name: "播放操作"

    Repeater {
        model: root.miniPlayer.fan

        T.AbstractButton {
            id: badge

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
            Accessible.onPressAction: Press.byAction(badge)
            onHoveredChanged: if (hovered) root.miniPlayer.highlight(index)
            onClicked: root.miniPlayer.choose(index)
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
                    visible: !badge.isActive
                }
                SurfaceImage {
                    objectName: "chosenBadge"
                    anchors.fill: parent
                    surface: Surfaces.playButton(root.theme, root.buttonSize)
                    visible: badge.isActive
                }
            }
            contentItem: Item {
                SymbolIcon {
                    objectName: "glyph"
                    anchors.centerIn: parent
                    name: badge.symbol
                    size: Metrics.glyphOf(root.buttonSize)
                    color: !badge.isActive ? root.theme.primaryTextColor : root.theme.useNeumorphism ? root.theme.primaryColor : SystemColors.accentInk
                }
            }
        }
    }
    SurfaceImage {
        id: bubble

        readonly property point place: MiniPlayerGeometry.labelPlace(root.centre, root.activeOffset, Qt.size(width, height), Qt.size(root.width, root.height))

        objectName: "fanLabel"
        x: Math.round(place.x)
        y: Math.round(place.y)
        z: 2
        width: text.implicitWidth + 2 * Metrics.cardPadding
        height: text.implicitHeight + Metrics.rowSpacing
        surface: Surfaces.themedCard(root.theme, height / 2)
        visible: root.miniPlayer.activeLabel !== "" && root.openness > 0

        StyledText {
            id: text

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

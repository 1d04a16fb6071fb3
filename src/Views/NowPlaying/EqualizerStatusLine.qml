// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Cadorel

/// Whether the equalizer is on, whether it reaches this song, and the way to it. What does not fit into a line goes into a
/// second one.
Item {
    id: root

    required property NowPlayingViewModel nowPlaying
    property bool isCentred: true
    property color ink: ThemeEnvironment.theme.primaryTextColor
    property color secondaryInk: ThemeEnvironment.theme.secondaryTextColor

    readonly property real wanted: status.implicitWidth + hint.implicitWidth + button.implicitWidth + 2 * Metrics.rowSpacing
    readonly property bool isFolded: hint.visible && wanted > width
    readonly property real lineHeight: Math.max(Metrics.statusLineHeight, button.implicitHeight)

    signal equalizerRequested

    /// Where content of that width begins.
    function beginningOf(content: real): real {
        return isCentred ? Math.round((width - content) / 2) : 0;
    }

    implicitHeight: isFolded ? lineHeight + hint.implicitHeight : lineHeight

    RowLayout {
        id: status

        x: root.beginningOf(root.isFolded || !hint.visible ? width + Metrics.rowSpacing + button.width : root.wanted)
        height: root.lineHeight
        spacing: Metrics.grid

        ThemedIcon {
            systemName: AppIcons.audio.equalizer
            kawaiiName: KawaiiIcon.equalizer
            size: Metrics.symbolTiny
            color: root.secondaryInk
        }
        StyledText {
            objectName: "equalizerStatusText"
            text: root.nowPlaying.equalizerText
            style: TextStyles.caption1
            color: root.secondaryInk
            elide: Text.ElideNone
        }
    }
    RowLayout {
        id: hint

        objectName: "needsReplay"
        visible: root.nowPlaying.needsReplay
        x: root.isFolded ? root.beginningOf(width) : status.x + status.width + Metrics.rowSpacing
        y: root.isFolded ? root.lineHeight : Math.round((root.lineHeight - height) / 2)
        width: Math.min(implicitWidth, root.width)
        spacing: Metrics.grid

        SymbolIcon {
            name: AppIcons.status.loading
            size: Metrics.symbolTiny
            color: root.secondaryInk
        }
        StyledText {
            id: hintText

            Layout.fillWidth: true
            text: "需要重新播放以生效"
            style: TextStyles.caption1
            color: root.secondaryInk
        }
    }
    T.AbstractButton {
        id: button

        objectName: "equalizerStatusButton"
        x: (hint.visible && !root.isFolded ? hint.x + hint.width : status.x + status.width) + Metrics.rowSpacing
        y: Math.round((root.lineHeight - height) / 2)
        implicitWidth: implicitContentWidth + leftPadding + rightPadding
        implicitHeight: Math.max(implicitContentHeight + Metrics.rowSpacing, Metrics.statusButtonHeight)
        leftPadding: Metrics.cardPadding
        rightPadding: Metrics.cardPadding
        hoverEnabled: true
        focusPolicy: Qt.TabFocus
        text: root.nowPlaying.equalizerButtonText
        Accessible.name: "均衡器：" + text
        Accessible.description: root.nowPlaying.equalizerText + (hint.visible ? "，" + hintText.text : "")
        Accessible.onPressAction: Press.byAction(button)
        Keys.onPressed: event => Press.holdBack(event)
        Keys.onReleased: event => Press.holdBack(event)
        Keys.onReturnPressed: event => Press.byKey(button, event)
        Keys.onEnterPressed: event => Press.byKey(button, event)
        onClicked: root.equalizerRequested()
        // The pill is small; the finger gets what it needs.
        containmentMask: QtObject {
            function contains(point: point): bool {
                const reach = Math.max(0, (Metrics.touchTarget - button.height) / 2);
                return point.x >= -reach / 2 && point.x <= button.width + reach / 2 && point.y >= -reach && point.y <= button.height + reach;
            }
        }

        background: Rectangle {
            radius: height / 2
            color: Qt.alpha(root.ink, Metrics.pressedOpacity * (button.down ? Metrics.statusButtonPress : button.hovered ? Metrics.statusButtonHover : 1))

            FocusRing {
                radius: parent.radius
                border.color: root.ink
                visible: button.visualFocus
            }
        }
        contentItem: StyledText {
            text: button.text
            style: TextStyles.caption1
            font.weight: Font.DemiBold
            color: root.ink
            horizontalAlignment: Text.AlignHCenter
            elide: Text.ElideNone
        }
    }
}

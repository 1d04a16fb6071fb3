// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// One song of the queue, on whatever lies behind the screen that plays. A tap plays it.
ThemedListRow {
    id: root

    required property int index
    required property string title
    required property string artist
    required property string coverSource
    required property bool isPlaying
    /// Of its texts, for what lies behind it: without another, the look's own background.
    property color ink: Surfaces.textOn(theme, Surfaces.background(theme), theme.primaryTextColor)
    property color secondaryInk: Surfaces.textOn(theme, Surfaces.background(theme), theme.secondaryTextColor)
    /// Of the song that plays.
    property color tint: ink

    implicitHeight: Math.max(Metrics.touchTarget, texts.implicitHeight) + 2 * Metrics.rowSpacing
    hasMenu: false
    Accessible.name: title + "，" + artist + (isPlaying ? "，正在播放" : "")
    Accessible.selected: isPlaying

    background: ThemedHighlight {
        isHovered: root.hovered
        isPressed: root.down
        isFocused: root.showsFocus
        ink: root.ink
        focusColor: root.ink
        theme: root.theme
    }
    ArtworkImageView {
        id: cover

        anchors.left: parent.left
        anchors.leftMargin: Metrics.rowSpacing
        anchors.verticalCenter: parent.verticalCenter
        source: root.coverSource
        size: Metrics.touchTarget
    }
    Column {
        id: texts

        anchors.left: cover.right
        anchors.leftMargin: Metrics.cardPadding
        anchors.right: mark.left
        anchors.rightMargin: Metrics.cardPadding
        anchors.verticalCenter: parent.verticalCenter

        StyledText {
            objectName: "queueTitle"
            width: parent.width
            text: root.title
            color: root.isPlaying ? root.tint : root.ink
            font.weight: root.isPlaying ? Font.DemiBold : Font.Normal
        }
        StyledText {
            objectName: "queueArtist"
            width: parent.width
            text: root.artist
            style: TextStyles.footnote
            color: root.secondaryInk
        }
    }
    SymbolIcon {
        id: mark

        objectName: "queueMark"
        anchors.right: parent.right
        anchors.rightMargin: visible ? Metrics.cardPadding : 0
        anchors.verticalCenter: parent.verticalCenter
        width: visible ? size : 0
        name: root.isPlaying ? AppIcons.audio.waveform : ""
        size: Metrics.symbolSmall
        color: root.tint
        visible: root.isPlaying
    }
}

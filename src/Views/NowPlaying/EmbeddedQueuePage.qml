// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Cadorel

/// The queue as a page of the screen that plays: all of its songs, and the button that empties it. It has no ground of
/// its own.
FocusScope {
    id: root

    required property QueueViewModel queue
    property AppTheme theme: ThemeEnvironment.theme
    /// Of its texts, for what lies behind it: without another, the look's own background.
    property color ink: Surfaces.textOn(theme, Surfaces.background(theme), theme.primaryTextColor)
    property color secondaryInk: Surfaces.textOn(theme, Surfaces.background(theme), theme.secondaryTextColor)
    /// Of the song that plays.
    property color tint: ink

    function showPlayingSong(): void {
        if (queue.playingRow >= 0)
            list.positionViewAtIndex(queue.playingRow, ListView.Center);
    }

    Accessible.role: Accessible.Pane
    Accessible.name: "播放队列"
    // Whoever comes to the page sees where the queue is; the list stays while it is read.
    onVisibleChanged: if (visible) showPlayingSong()
    Component.onCompleted: showPlayingSong()

    StyledText {
        id: title

        objectName: "queuePageTitle"
        anchors.left: parent.left
        anchors.leftMargin: Metrics.screenMargin
        anchors.right: clearButton.left
        anchors.verticalCenter: clearButton.verticalCenter
        text: "播放队列"
        style: TextStyles.title3
        font.weight: Font.DemiBold
        color: root.ink
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    T.AbstractButton {
        id: clearButton

        objectName: "clearQueueButton"
        anchors.right: parent.right
        anchors.rightMargin: Metrics.screenMargin - leftPadding
        width: visible ? label.implicitWidth + 2 * leftPadding : 0
        height: Metrics.touchTarget
        leftPadding: Metrics.cardPadding
        visible: !root.queue.isEmpty
        // An invisible one would go on taking Space.
        enabled: visible
        onEnabledChanged: if (!enabled) focus = false
        hoverEnabled: true
        focusPolicy: Qt.TabFocus
        text: "清空"
        Accessible.name: text
        Accessible.description: "清空播放队列"
        Accessible.onPressAction: Press.byAction(clearButton)
        Keys.onReturnPressed: event => Press.byKey(clearButton, event)
        Keys.onEnterPressed: event => Press.byKey(clearButton, event)
        Keys.onPressed: event => Press.holdBack(event)
        Keys.onReleased: event => Press.holdBack(event)
        onClicked: root.queue.clear()

        background: ThemedHighlight {
            isHovered: clearButton.hovered
            isPressed: clearButton.down
            isFocused: clearButton.visualFocus
            ink: root.ink
            focusColor: root.ink
            theme: root.theme
        }
        contentItem: Item { // qmllint disable deferred-property-id
            StyledText {
                id: label

                anchors.centerIn: parent
                text: clearButton.text
                style: TextStyles.subheadline
                font.weight: Font.DemiBold
                color: root.ink
            }
        }
    }
    RowList {
        id: list

        objectName: "queuePageList"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Metrics.screenMargin - Metrics.rowSpacing
        anchors.rightMargin: Metrics.screenMargin - Metrics.rowSpacing
        anchors.top: clearButton.bottom
        anchors.topMargin: Metrics.grid
        anchors.bottom: parent.bottom
        focus: true
        visible: !root.queue.isEmpty
        model: root.queue.songs
        Accessible.name: "播放队列"
        playsAndPauses: true
        scrollBarInk: root.ink
        onActivated: row => root.queue.play(row)
        onPlayPauseRequested: root.queue.togglePlayPause()

        delegate: QueueSongRow {
            width: ListView.view.width
            theme: root.theme
            ink: root.ink
            secondaryInk: root.secondaryInk
            tint: root.tint
            onClicked: list.take(index)
        }
    }
    Column {
        objectName: "emptyQueue"
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Metrics.screenMargin, Metrics.textBlockWidth)
        spacing: Metrics.cardPadding
        visible: root.queue.isEmpty

        SymbolIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            name: AppIcons.music.noteList
            size: Metrics.symbolHuge
            color: root.secondaryInk
        }
        StyledText {
            objectName: "emptyQueueText"
            width: parent.width
            text: "播放队列为空"
            color: root.secondaryInk
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}

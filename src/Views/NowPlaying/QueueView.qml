// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The queue as a screen: what plays, and what comes next. It changes nothing of the queue; a tap plays a song of it.
FocusScope {
    id: root

    required property QueueViewModel queue
    /// Not where what it lies in has the title.
    property bool showsTitle: true
    property AppTheme theme: ThemeEnvironment.theme

    readonly property int sideMargin: Math.max(Metrics.screenMargin, Math.round((width - Metrics.contentWidth) / 2))

    function showBeginning(): void {
        list.positionViewAtBeginning();
    }

    StyledText {
        id: title

        objectName: "queueViewTitle"
        anchors.left: parent.left
        anchors.leftMargin: root.sideMargin
        anchors.right: parent.right
        anchors.rightMargin: root.sideMargin
        y: visible ? Metrics.screenMargin : 0
        height: visible ? implicitHeight : 0
        visible: root.showsTitle
        text: "播放队列"
        style: TextStyles.largeTitle
        color: Surfaces.textOn(root.theme, Surfaces.background(root.theme), root.theme.primaryTextColor)
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    RowList {
        id: list

        objectName: "queueViewList"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: title.bottom
        anchors.topMargin: Metrics.rowSpacing
        anchors.bottom: parent.bottom
        focus: true
        visible: !root.queue.isEmpty
        spacing: Metrics.rowSpacing
        model: root.queue.upcoming
        section.property: "section"
        Accessible.name: "播放队列"
        playsAndPauses: true
        onActivated: row => root.queue.playUpcoming(row)
        onPlayPauseRequested: root.queue.togglePlayPause()

        // A list makes no headings of a bound component.
        // qmllint disable unqualified
        section.delegate: Item {
            id: heading

            required property string section

            width: ListView.view.width
            height: header.implicitHeight + Metrics.cardPadding + Metrics.grid

            ThemedSectionHeader {
                id: header

                objectName: "queueSection"
                anchors.left: parent.left
                anchors.leftMargin: root.sideMargin
                anchors.right: parent.right
                anchors.rightMargin: root.sideMargin
                anchors.bottom: parent.bottom
                anchors.bottomMargin: Metrics.grid
                title: heading.section
                theme: root.theme
            }
        }
        delegate: ThemedSongRow {
            required property int index
            required title
            required property string artist
            required coverSource
            required property bool isPlaying

            objectName: "queueRow" + index
            width: ListView.view.width
            leftInset: root.sideMargin
            rightInset: root.sideMargin
            hasMenu: false
            subtitle: artist
            isCurrent: isPlaying
            theme: root.theme
            onClicked: list.take(index)
        }
        // qmllint enable unqualified
    }
    EmptyStateView {
        objectName: "queueEmpty"
        anchors.fill: parent
        visible: root.queue.isEmpty
        title: "队列为空"
        systemImage: AppIcons.music.queue
        description: "播放歌曲后会显示在这里"
    }
}

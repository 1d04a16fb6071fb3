// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// Cover, title and artist of the running song.
Item {
    id: root

    property string title
    property string artist
    property string coverSource
    property bool isLoading: false

    /// Loading that takes a moment only is not worth a word.
    property bool saysLoading: false

    implicitHeight: Metrics.rowCover
    onIsLoadingChanged: if (!isLoading) saysLoading = false

    Timer {
        interval: Metrics.loadingHintDelay
        running: root.isLoading
        onTriggered: root.saysLoading = true
    }
    ArtworkImageView {
        id: cover

        source: root.coverSource
        cornerRadius: Metrics.coverRadius
    }
    Column {
        anchors.left: cover.right
        anchors.leftMargin: Metrics.cardPadding
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter

        StyledText {
            objectName: "currentTitle"
            width: parent.width
            text: root.title
            style: TextStyles.headline
        }
        StyledText {
            width: parent.width
            text: root.saysLoading ? "正在载入…" : root.artist
            style: TextStyles.subheadline
            color: SystemColors.secondaryLabel
            visible: text !== ""
        }
    }
}

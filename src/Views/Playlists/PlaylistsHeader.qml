// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Title of the playlists, and the button for a new one.
Item {
    id: root

    signal createRequested

    implicitHeight: title.implicitHeight + Metrics.screenMargin + Metrics.rowSpacing

    StyledText {
        id: title

        anchors.left: parent.left
        anchors.right: createButton.left
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Metrics.rowSpacing
        text: "歌单"
        style: TextStyles.largeTitle
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    IconButton {
        id: createButton

        objectName: "createPlaylistButton"
        anchors.right: parent.right
        anchors.rightMargin: -(width - Metrics.symbol) / 2
        anchors.verticalCenter: title.verticalCenter
        symbol: AppIcons.action.add
        color: SystemColors.accent
        text: "新建歌单"
        onClicked: root.createRequested()
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// One playlist of a list: its cover, what it is called, how many songs it names and of which kind. Without a menu it
/// is there to be chosen.
ListRow {
    id: root

    required property int index
    required property string playlistId
    required property string name
    required property string countText
    required property string kindText
    required property string coverSource
    required property bool hasCover
    required property bool isProtected
    required property bool isMarked

    implicitHeight: Metrics.rowHeight
    Accessible.name: name + "，" + countText + "，" + kindText + (isMarked ? "，已添加" : "")

    PlaylistCover {
        id: cover

        anchors.left: parent.left
        anchors.leftMargin: Metrics.rowSpacing
        anchors.verticalCenter: parent.verticalCenter
        source: root.coverSource
        theme: root.theme
    }
    StyledText {
        id: title

        objectName: "playlistName"
        anchors.left: cover.right
        anchors.leftMargin: Metrics.cardPadding
        anchors.right: trailing.left
        anchors.rightMargin: Metrics.rowSpacing
        anchors.bottom: parent.verticalCenter
        text: root.name
        color: Surfaces.ink(root.theme, root.theme.primaryTextColor)
    }
    StyledText {
        id: count

        objectName: "playlistCount"
        anchors.left: title.left
        anchors.top: parent.verticalCenter
        anchors.topMargin: Math.round((badge.height - height) / 2)
        text: root.countText
        style: TextStyles.footnote
        color: Surfaces.ink(root.theme, root.theme.secondaryTextColor)
        elide: Text.ElideNone
    }
    Rectangle {
        id: badge

        anchors.left: count.right
        anchors.leftMargin: Metrics.rowSpacing
        anchors.top: parent.verticalCenter
        width: kind.implicitWidth + 2 * Metrics.rowSpacing
        height: kind.implicitHeight + Metrics.grid
        radius: height / 2
        color: "transparent"
        border.width: Metrics.hairline
        border.color: Qt.alpha(root.theme.primaryColor, Metrics.badgeEdgeOpacity)

        StyledText {
            id: kind

            objectName: "playlistKind"
            anchors.centerIn: parent
            text: root.kindText
            style: TextStyles.caption1
            color: Surfaces.ink(root.theme, root.theme.primaryColor)
        }
    }
    Item {
        id: trailing

        anchors.right: parent.right
        width: Metrics.touchTarget
        height: parent.height

        ThemedIconButton {
            objectName: "playlistMore"
            anchors.centerIn: parent
            visible: root.hasMenu
            // The keyboard has the menu key for it.
            focusPolicy: Qt.NoFocus
            symbol: AppIcons.navigation.more
            theme: root.theme
            text: "更多操作"
            Accessible.name: "“" + root.name + "”的更多操作"
            onClicked: root.menuRequested(trailing.mapToItem(root, 0, trailing.height / 2))
        }
        SymbolIcon {
            objectName: "playlistMark"
            anchors.centerIn: parent
            visible: !root.hasMenu
            name: root.isMarked ? AppIcons.status.checkmark : AppIcons.navigation.forward
            size: root.isMarked ? Metrics.symbolSmall : Metrics.symbolTiny
            color: root.isMarked ? root.theme.primaryColor : root.theme.secondaryTextColor
        }
    }
}

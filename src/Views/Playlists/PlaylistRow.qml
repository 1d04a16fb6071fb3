// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// One playlist of a list: its cover, what it is called, how many songs it names and of which kind.
T.ItemDelegate {
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
    /// The row opens a page and has a menu; otherwise it is there to be chosen.
    property bool hasMenu: true
    property bool showsFocus: false
    property int sideMargin: Metrics.screenMargin

    signal menuRequested(point position)

    implicitHeight: Metrics.rowHeight
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    text: name
    Accessible.name: name + "，" + countText + "，" + kindText + (isMarked ? "，已添加" : "")
    Accessible.onPressAction: root.clicked()
    onPressAndHold: {
        if (hasMenu)
            menuRequested(Qt.point(pressX, pressY));
    }

    TapHandler {
        enabled: root.hasMenu
        acceptedButtons: Qt.RightButton
        onTapped: eventPoint => root.menuRequested(eventPoint.position)
    }

    background: Item {
        Rectangle {
            anchors.fill: parent
            anchors.leftMargin: root.sideMargin - Metrics.rowSpacing
            anchors.rightMargin: root.sideMargin - Metrics.rowSpacing
            radius: Metrics.cardRadius
            color: root.down ? SystemColors.pressed : root.hovered ? SystemColors.hover : "transparent"

            FocusRing {
                radius: parent.radius
                visible: root.showsFocus
            }
        }
    }

    Item {
        anchors.fill: parent

        PlaylistCover {
            id: cover

            anchors.left: parent.left
            anchors.leftMargin: root.sideMargin
            anchors.verticalCenter: parent.verticalCenter
            source: root.coverSource
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
        }
        StyledText {
            id: count

            objectName: "playlistCount"
            anchors.left: title.left
            anchors.top: parent.verticalCenter
            anchors.topMargin: Math.round((badge.height - height) / 2)
            text: root.countText
            style: TextStyles.footnote
            color: SystemColors.secondaryLabel
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
            color: SystemColors.accentTint

            StyledText {
                id: kind

                objectName: "playlistKind"
                anchors.centerIn: parent
                text: root.kindText
                style: TextStyles.caption1
                color: SystemColors.accent
            }
        }
        Item {
            id: trailing

            anchors.right: parent.right
            anchors.rightMargin: root.sideMargin - (width - Metrics.symbol) / 2
            width: Metrics.touchTarget
            height: parent.height

            IconButton {
                objectName: "playlistMore"
                anchors.centerIn: parent
                visible: root.hasMenu
                // The keyboard has the menu key for it.
                focusPolicy: Qt.NoFocus
                symbol: AppIcons.navigation.more
                color: SystemColors.secondaryLabel
                text: "“" + root.name + "”的更多操作"
                onClicked: root.menuRequested(Qt.point(trailing.x, trailing.height / 2))
            }
            SymbolIcon {
                objectName: "playlistMark"
                anchors.centerIn: parent
                visible: !root.hasMenu
                name: root.isMarked ? AppIcons.status.checkmark : AppIcons.navigation.forward
                size: root.isMarked ? Metrics.symbolSmall : Metrics.symbolTiny
                color: root.isMarked ? SystemColors.accent : SystemColors.tertiaryLabel
            }
        }
    }
}

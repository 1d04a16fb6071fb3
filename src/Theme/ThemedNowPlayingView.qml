// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The player's screen put together from the components of the looks alone, for previews of a look: it shows what it is
/// told and plays nothing. The screen that plays is NowPlayingView.
Item {
    id: root

    property string title
    property string artist
    /// Address of the cover; empty for none.
    property string image
    property bool isPlaying: false
    property bool isFavorite: false
    property real progress: 0
    property AppTheme theme: ThemeEnvironment.theme

    readonly property color ink: Surfaces.textOn(theme, Surfaces.background(theme), theme.primaryTextColor)
    readonly property real coverSize: width - 4 * Metrics.screenMargin

    implicitWidth: Metrics.minimumWidth - 2 * Metrics.sectionGap
    implicitHeight: column.implicitHeight + 2 * Metrics.sectionGap

    ThemedBackground {
        anchors.fill: parent
        theme: root.theme
    }
    Column {
        id: column

        x: Metrics.screenMargin
        y: Metrics.sectionGap
        width: parent.width - 2 * x
        spacing: Metrics.screenMargin

        ThemedAlbumCover {
            anchors.horizontalCenter: parent.horizontalCenter
            size: root.coverSize
            cornerRadius: root.theme.nowPlayingConfig.coverCornerRadius
            image: root.image
            theme: root.theme

            SymbolIcon {
                anchors.centerIn: parent
                name: AppIcons.music.note
                size: Math.round(root.coverSize * Metrics.coverNoteShare)
                color: root.theme.secondaryTextColor
                visible: root.image === ""
            }
            KawaiiCornerDecoration {
                imageName: KawaiiDecorations.cartoonAt(1)
                corner: KawaiiCorners.TopTrailing
                theme: root.theme
                visible: root.theme.nowPlayingConfig.showDecorations
            }
        }
        Item {
            width: parent.width
            height: Math.max(texts.height, heart.height)

            Column {
                id: texts

                anchors.left: parent.left
                anchors.right: heart.left
                anchors.verticalCenter: parent.verticalCenter

                StyledText {
                    width: parent.width
                    text: root.title
                    style: TextStyles.title3
                    font.weight: Font.DemiBold
                    color: root.ink
                }
                StyledText {
                    width: parent.width
                    text: root.artist
                    style: TextStyles.subheadline
                    color: Surfaces.textOn(root.theme, Surfaces.background(root.theme), root.theme.secondaryTextColor)
                }
            }
            ThemedHeartButton {
                id: heart

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                isFavorite: root.isFavorite
                theme: root.theme
            }
        }
        ThemedProgressBar {
            width: parent.width
            progress: root.progress
            theme: root.theme
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Metrics.sectionGap

            ThemedControlButton {
                anchors.verticalCenter: parent.verticalCenter
                systemName: AppIcons.playback.previous
                text: "上一首"
                theme: root.theme
            }
            ThemedPlayButton {
                isPlaying: root.isPlaying
                theme: root.theme
            }
            ThemedControlButton {
                anchors.verticalCenter: parent.verticalCenter
                systemName: AppIcons.playback.next
                text: "下一首"
                theme: root.theme
            }
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The large cover of what plays, alone or in the listener's cassette, with what moves to the music about it: the
/// largest square that the item has room for, in its middle.
Item {
    id: root

    required property AudioPlayerService player
    /// Address of the cover, of the provider "cover".
    property string coverSource
    /// Of the bars about it.
    property color waveColor: ThemeColor.accent
    property real size: Metrics.albumCover
    property AppTheme theme: ThemeEnvironment.theme

    readonly property int cassetteStyle: ThemeService.selectedCassetteStyle
    readonly property bool isCassette: cassetteStyle !== CassetteStyles.Type.none
    readonly property bool hasCover: coverSource !== "" && coverSource !== "image://cover/none"
    readonly property bool hasRing: ThemeService.showSoundWaveRing && Math.min(width, height) >= Metrics.leastRing
    /// Side of the cover, or of the cassette, without what is about it.
    readonly property real side: Math.max(0, Math.floor(Math.min(width, height)) - (hasRing ? 2 * Metrics.waveReach : 0))
    readonly property real cornerRadius: Math.max(0, Math.min(ThemeService.albumCoverCornerRadius, side / 2))

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.Graphic
    Accessible.name: "封面"

    Item {
        anchors.centerIn: parent
        width: root.side
        height: root.side

        SoundWaveRing {
            objectName: "soundWaveRing"
            anchors.fill: parent
            visible: root.hasRing
            player: root.player
            cornerRadius: root.isCassette ? root.side * Metrics.cassetteCornerShare : root.cornerRadius
            color: root.waveColor
        }
        ThemedAlbumCover {
            objectName: "normalAlbumCover"
            visible: !root.isCassette && root.side > 0
            image: !root.isCassette && root.hasCover ? root.coverSource : ""
            size: Math.max(1, root.side)
            cornerRadius: root.cornerRadius
            showsShadow: root.theme.nowPlayingConfig.showCoverShadow
            theme: root.theme

            SymbolIcon {
                objectName: "placeholder note"
                anchors.centerIn: parent
                visible: !root.hasCover
                name: AppIcons.music.note
                size: Math.round(root.side * Metrics.coverNoteShare)
                color: root.theme.secondaryTextColor
            }
        }
        CassetteCover {
            readonly property cassetteConfig config: ThemeService.currentCassetteConfig

            objectName: "cassetteAlbumCover"
            anchors.fill: parent
            visible: root.isCassette && root.side > 0
            imageName: AppearanceOptions.cassetteStyles[root.cassetteStyle].imageName
            coverSource: root.isCassette ? root.coverSource : ""
            configScale: config.scale
            offsetX: config.offsetX
            offsetY: config.offsetY
        }
        DancingEmoji {
            objectName: "dancingEmoji"
            x: root.side - width * Metrics.dancingOverlap
            y: x
            visible: root.hasRing
            player: root.player
        }
    }
}

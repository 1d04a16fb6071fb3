// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The chosen cassette with a made cover in it, as the player's screen would show it.
Item {
    id: root

    property AppTheme theme: ThemeEnvironment.theme
    readonly property var style: {
        const styles = AppearanceOptions.cassetteStyles;
        for (let i = 0; i < styles.length; ++i) {
            if (styles[i].value === ThemeService.selectedCassetteStyle)
                return styles[i];
        }
        return null;
    }
    readonly property string imageName: style?.imageName ?? ""
    readonly property rect place: CassetteLayout.coverRect(picture.side, ThemeService.currentCassetteConfig.scale, ThemeService.currentCassetteConfig.offsetX, ThemeService.currentCassetteConfig.offsetY)

    implicitHeight: Metrics.cassettePreview + 2 * Metrics.cardPadding
    Accessible.ignored: true

    CassetteCover {
        id: picture

        objectName: "previewPicture"
        anchors.horizontalCenter: parent.horizontalCenter
        y: Metrics.cardPadding
        width: Metrics.cassettePreview
        height: Metrics.cassettePreview
        imageName: root.imageName
        visible: root.imageName !== ""
    }
    // In the place of a cover: there need not be a song.
    Rectangle {
        objectName: "previewCover"
        x: picture.x + Math.round(root.place.x)
        y: picture.y + Math.round(root.place.y)
        width: Math.round(root.place.width)
        height: width
        radius: root.imageName === "" ? ThemeService.albumCoverCornerRadius : CassetteLayout.coverRadius(width)
        gradient: Gradient {
            GradientStop {
                position: 0
                color: SystemColors.pink
            }
            GradientStop {
                position: 1
                color: SystemColors.purple
            }
        }

        SymbolIcon {
            anchors.centerIn: parent
            name: AppIcons.music.note
            size: Math.max(Metrics.grid, Math.round(parent.width / 2))
            color: SystemColors.accentInk
        }
    }
}

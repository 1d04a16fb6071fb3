// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What moves about the cover, and its corners.
Column {
    id: root

    property AppTheme theme: ThemeEnvironment.theme

    signal emojiRequested

    spacing: Metrics.screenMargin

    ThemedSettingsSection {
        width: parent.width
        title: "动效"
        theme: root.theme
        seamInset: Metrics.cardPadding

        SwitchRow {
            objectName: "soundWaveRing"
            width: parent.width
            isInCard: true
            theme: root.theme
            text: "声波动效"
            checked: ThemeService.showSoundWaveRing
            onToggled: ThemeService.setSoundWaveRing(checked)
        }
        SheetRow {
            objectName: "dancingEmoji"
            theme: root.theme
            text: "跳动表情"
            detail: ThemeService.useCustomImage ? "自定义图片" : ""
            Accessible.description: ThemeService.useCustomImage ? "" : ThemeService.dancingEmoji
            onClicked: root.emojiRequested()

            StyledText {
                objectName: "chosenEmoji"
                anchors.right: parent.right
                anchors.rightMargin: Metrics.settingsSquare + Metrics.rowSpacing
                anchors.verticalCenter: parent.verticalCenter
                text: ThemeService.dancingEmoji
                style: TextStyles.title3
                font.family: "Noto Color Emoji"
                visible: !ThemeService.useCustomImage
            }
        }
    }
    ThemedSettingsSection {
        width: parent.width
        title: "封面"
        theme: root.theme
        seamInset: Metrics.cardPadding

        SettingSliderRow {
            objectName: "coverRadius"
            theme: root.theme
            title: "封面圆角"
            valueText: Math.round(ThemeService.albumCoverCornerRadius)
            from: AppearanceOptions.albumCoverCornerRadii.from
            to: AppearanceOptions.albumCoverCornerRadii.to
            stepSize: 1
            shown: ThemeService.albumCoverCornerRadius
            onWanted: value => ThemeService.setAlbumCoverCornerRadius(value)
        }
        Row {
            width: parent.width
            padding: Metrics.cardPadding
            spacing: Metrics.cardPadding

            TextButton {
                objectName: "squareCover"
                width: (parent.width - 3 * Metrics.cardPadding) / 2
                symbol: AppIcons.appearance.square
                text: "方形"
                onClicked: ThemeService.setSquareAlbumCover()
            }
            TextButton {
                objectName: "circleCover"
                width: (parent.width - 3 * Metrics.cardPadding) / 2
                symbol: AppIcons.appearance.circle
                text: "圆形"
                onClicked: ThemeService.setCircleAlbumCover()
            }
        }
    }
}

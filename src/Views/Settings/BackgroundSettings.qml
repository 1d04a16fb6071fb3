// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What lies behind the player's screen, for the current look.
Column {
    id: root

    required property NowPlayingSettingsViewModel settings
    property AppTheme theme: ThemeEnvironment.theme
    readonly property bool isPicture: ThemeService.nowPlayingBackgroundStyle === NowPlayingBackgroundStyles.Type.customImage
    readonly property bool isColor: ThemeService.nowPlayingBackgroundStyle === NowPlayingBackgroundStyles.Type.customColor

    signal colorRequested

    ThemedSettingsSection {
        width: parent.width
        title: "背景"
        theme: root.theme
        seamInset: Metrics.cardPadding

        SettingChoiceRow {
            objectName: "backgroundStyle"
            theme: root.theme
            text: "背景样式"
            options: AppearanceOptions.nowPlayingBackgroundStyles
            current: ThemeService.nowPlayingBackgroundStyle
            onChosen: value => ThemeService.setNowPlayingBackgroundStyle(value)
        }
        SheetRow {
            objectName: "backgroundFromAlbum"
            theme: root.theme
            visible: root.isPicture
            symbol: AppIcons.file.photoLibrary
            text: "相册"
            onClicked: root.settings.chooseBackgroundImage()
        }
        SheetRow {
            objectName: "backgroundFromFile"
            theme: root.theme
            visible: root.isPicture
            symbol: AppIcons.file.folderOutline
            text: "文件"
            onClicked: root.settings.chooseBackgroundImage()
        }
        SheetRow {
            objectName: "backgroundClear"
            theme: root.theme
            visible: root.isPicture
            enabled: ThemeService.customBackgroundImageSource !== ""
            symbol: AppIcons.action.trash
            mark: ""
            text: "清除图片"
            onClicked: ThemeService.clearCustomBackgroundImage()
        }
        SheetRow {
            objectName: "backgroundColor"
            theme: root.theme
            visible: root.isColor
            symbol: AppIcons.settings.accentColor
            text: "选择颜色"
            mark: "circle.fill"
            markColor: ThemeService.customBackgroundColor
            onClicked: root.colorRequested()
        }
        SettingSliderRow {
            objectName: "backgroundOpacity"
            theme: root.theme
            title: "背景遮罩"
            valueText: Math.round(100 * ThemeService.nowPlayingBackgroundOpacity) + "%"
            from: AppearanceOptions.backgroundOpacities.from
            to: AppearanceOptions.backgroundOpacities.to
            stepSize: 0.05
            shown: ThemeService.nowPlayingBackgroundOpacity
            onWanted: value => ThemeService.setNowPlayingBackgroundOpacity(value)
        }
        SettingSliderRow {
            objectName: "backgroundBlur"
            theme: root.theme
            visible: root.isPicture
            title: "模糊度"
            valueText: Math.round(ThemeService.customBackgroundBlur)
            from: AppearanceOptions.backgroundBlurs.from
            to: AppearanceOptions.backgroundBlurs.to
            stepSize: 1
            shown: ThemeService.customBackgroundBlur
            onWanted: value => ThemeService.setCustomBackgroundBlur(value)
        }
    }
    PictureNotice {
        objectName: "pictureNotice"
        width: parent.width
        text: root.settings.backgroundNotice
        look: root.theme
    }
    SettingsFootnote {
        look: root.theme
        text: "自定义背景会覆盖主题默认背景"
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// How lyrics are shown.
Column {
    id: root

    property AppTheme theme: ThemeEnvironment.theme

    ThemedSettingsSection {
        width: parent.width
        title: "歌词"
        theme: root.theme
        seamInset: Metrics.cardPadding

        SettingChoiceRow {
            objectName: "lyricAnimation"
            theme: root.theme
            text: "歌词动画"
            options: AppearanceOptions.lyricAnimationStyles
            current: ThemeService.lyricAnimationStyle
            onChosen: value => ThemeService.setLyricAnimationStyle(value)
        }
        SettingChoiceRow {
            objectName: "lyricsAlignment"
            theme: root.theme
            text: "对齐方式"
            options: AppearanceOptions.lyricsAlignments
            current: ThemeService.lyricsAlignment
            onChosen: value => ThemeService.setLyricsAlignment(value)
        }
        SwitchRow {
            objectName: "lyricsBlur"
            width: parent.width
            isInCard: true
            theme: root.theme
            text: "距离模糊效果"
            checked: ThemeService.lyricsBlurEnabled
            onToggled: ThemeService.setLyricsBlurEnabled(checked)
        }
        SettingSliderRow {
            objectName: "lyricsFontSize"
            theme: root.theme
            title: "字体大小"
            valueText: Math.round(ThemeService.lyricsFontSize) + "pt"
            from: AppearanceOptions.lyricsFontSizes.from
            to: AppearanceOptions.lyricsFontSizes.to
            stepSize: 1
            shown: ThemeService.lyricsFontSize
            onWanted: value => ThemeService.setLyricsFontSize(value)
        }
    }
    SettingsFootnote {
        look: root.theme
        text: "双击歌词可跳转到该位置播放"
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// How the player's screen looks: lyrics, background, and what belongs to the current look. Every change is seen at
/// once and kept.
ThemedSheet {
    id: root

    required property NowPlayingSettingsViewModel settings

    title: "播放界面 - " + theme.displayName
    acceptName: "nowPlayingSettingsDone"
    hugsContent: false
    onClosed: settings.dismissNotice()

    StyledText {
        objectName: "currentTheme"
        width: parent.width
        text: "当前主题: " + root.theme.displayName
        style: TextStyles.subheadline
        color: Surfaces.textOn(root.theme, Surfaces.background(root.theme), root.theme.secondaryTextColor)
        horizontalAlignment: Text.AlignHCenter
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    LyricsSettings {
        width: parent.width
        theme: root.theme
    }
    BackgroundSettings {
        width: parent.width
        theme: root.theme
        settings: root.settings
        onColorRequested: colorPicker.open()
    }
    Loader {
        width: parent.width
        active: !root.theme.isKawaiiPink
        visible: active
        // qmllint disable unqualified
        sourceComponent: CoverSettings {
            theme: root.theme
            onEmojiRequested: emojiPicker.open()
        }
        // qmllint enable unqualified
    }
    Loader {
        width: parent.width
        active: root.theme.isKawaiiPink
        visible: active
        // qmllint disable unqualified
        sourceComponent: CassetteSettings {
            theme: root.theme
        }
        // qmllint enable unqualified
    }
    ThemeFeatures {
        width: parent.width
        theme: root.theme
    }

    EmojiPickerView {
        id: emojiPicker

        objectName: "emojiPicker"
        settings: root.settings
        theme: root.theme
    }
    BackgroundColorPickerView {
        id: colorPicker

        objectName: "backgroundColorPicker"
        theme: root.theme
    }
    FilePickerSheet {
        id: pictureSheet

        objectName: "pictureSheet"
        title: "选择图片"
        acceptPictureText: "使用这张图片"
        onChosen: urls => root.settings.takePicture(urls)
    }
    Connections {
        target: root.settings
        // There are two of these sheets over one view model.
        enabled: root.visible

        function onOwnPictureDialogRequested(): void {
            pictureSheet.showPictures(root.settings.pictureExtensions);
        }
    }
}

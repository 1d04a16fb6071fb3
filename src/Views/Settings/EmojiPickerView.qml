// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// What dances to the beat: an emoji, or a picture of the listener's.
ThemedSheet {
    id: root

    required property NowPlayingSettingsViewModel settings

    title: "跳动表情"
    acceptName: "emojiDone"
    onClosed: settings.dismissNotice()

    ThemedSettingsSection {
        width: parent.width
        title: "预览效果"

        Column {
            width: parent?.width ?? 0
            padding: Metrics.cardPadding
            spacing: Metrics.rowSpacing

            Item {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Metrics.emojiPreview
                height: Metrics.emojiPreview

                StyledText {
                    objectName: "emojiPreview"
                    anchors.centerIn: parent
                    text: ThemeService.dancingEmoji
                    style: TextStyles.largeTitle
                    font.family: "Noto Color Emoji"
                    visible: !picture.visible
                }
                Image {
                    id: picture

                    objectName: "dancingPicture"
                    anchors.fill: parent
                    fillMode: Image.PreserveAspectFit
                    source: ThemeService.customDancingImageSource
                    visible: ThemeService.useCustomImage && ThemeService.customDancingImageSource !== ""
                }
            }
            StyledText {
                width: parent.width - 2 * parent.padding
                text: "当前表情会随节拍跳动"
                style: TextStyles.footnote
                color: Surfaces.textOn(root.theme, Surfaces.themedCard(root.theme), root.theme.secondaryTextColor)
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
            }
        }
    }
    ThemedSettingsSection {
        width: parent.width
        title: "自定义图片"

        SheetRow {
            objectName: "importPicture"
            symbol: AppIcons.file.photoBadgePlus
            text: "导入"
            detail: ThemeService.useCustomImage ? "自定义" : ""
            onClicked: root.settings.chooseDancingImage()
        }
        SheetRow {
            objectName: "removePicture"
            symbol: AppIcons.action.trash
            mark: ""
            text: "删除"
            visible: ThemeService.customDancingImageSource !== ""
            onClicked: ThemeService.clearCustomDancingImage()
        }
    }
    PictureNotice {
        objectName: "dancingNotice"
        width: parent.width
        text: root.settings.dancingNotice
        look: root.theme
    }
    ThemedSectionHeader {
        // Where the headings of the cards above stand.
        x: Metrics.cardPadding
        width: parent.width - 2 * x
        title: "选择表情"
        theme: root.theme
    }
    Grid {
        id: emojis

        columns: Math.max(4, Math.floor(width / (Metrics.emojiButton + spacing)))
        width: parent.width
        spacing: Metrics.rowSpacing

        Repeater {
            model: ThemeService.emojiOptions

            delegate: EmojiButton {
                required property int index
                required property string modelData

                objectName: "emoji" + index
                width: Math.floor((emojis.width - (emojis.columns - 1) * emojis.spacing) / emojis.columns)
                emoji: modelData
                isSelected: !ThemeService.useCustomImage && modelData === ThemeService.dancingEmoji
                theme: root.theme
                onClicked: ThemeService.setDancingEmoji(modelData)
            }
        }
    }
}

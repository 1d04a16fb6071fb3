// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// An emoji to choose.
ThemedChoiceCard {
    id: root

    required property string emoji

    padding: Metrics.grid
    implicitHeight: Metrics.emojiButton
    text: emoji

    contentItem: StyledText {
        text: root.emoji
        style: TextStyles.title1
        font.family: "Noto Color Emoji"
        horizontalAlignment: Text.AlignHCenter
    }
}

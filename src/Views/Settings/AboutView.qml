// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What this program is, and which version of it.
SlidingPage {
    id: root

    required property string version
    readonly property string build: "1"
    property int sideMargin: Metrics.screenMargin

    SettingsForm {
        anchors.fill: parent
        focus: true
        sideMargin: root.sideMargin
        title: "关于"
        onBackRequested: root.closeRequested()

        Column {
            width: parent.width
            topPadding: Metrics.sectionGap
            spacing: Metrics.rowSpacing

            StyledText {
                width: parent.width
                height: Metrics.aboutEmblem + Metrics.screenMargin
                text: "🎵"
                // Alone it has no letter whose font would do.
                font.family: "Noto Color Emoji"
                font.pixelSize: Metrics.aboutEmblem
                lineHeight: height
                horizontalAlignment: Text.AlignHCenter
                Accessible.ignored: true
            }
            StyledText {
                width: parent.width
                text: "Tarnova Music Player"
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                style: TextStyles.title2
                font.weight: Font.Bold
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
            }
            QuietText {
                objectName: "aboutVersion"
                width: parent.width
                text: "Version " + root.version + " (" + root.build + ")"
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                style: TextStyles.subheadline
                horizontalAlignment: Text.AlignHCenter
            }
        }
        ThemedSettingsSection {
            width: parent.width
            title: "开发者"

            Item {
                width: parent.width
                height: credits.implicitHeight + 2 * Metrics.cardPadding

                QuietText {
                    id: credits

                    anchors.left: parent.left
                    anchors.right: parent.right
                    anchors.margins: Metrics.cardPadding
                    anchors.verticalCenter: parent.verticalCenter
                    text: "以 Qt、libmpv、FFmpeg、TagLib 与 Phosphor Icons 制作，依照 GPL-3.0-or-later 发布。"
                    style: TextStyles.subheadline
                    wrapMode: Text.Wrap
                }
            }
        }
    }
}

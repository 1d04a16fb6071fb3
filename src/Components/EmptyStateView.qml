// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Cadorel

/// What stands in place of a list without rows; `actions` are buttons beneath the text.
Item {
    id: root

    property AppTheme theme: ThemeEnvironment.theme
    /// Texts and buttons come first where there is little room.
    readonly property bool hasRoom: height >= Metrics.emptyStateRoom
    property string title: "没有内容"
    property string systemImage: AppIcons.music.note
    property string description: "这里还没有任何内容"
    /// For a ground that is no screen of the desktop's colours.
    property color titleColor: Surfaces.ink(theme, theme.primaryTextColor)
    property color descriptionColor: Surfaces.ink(theme, theme.secondaryTextColor)
    property color symbolColor: theme.primaryColor
    /// The emblem has no ground of the look's but a breath of its symbol's colour.
    property bool isOnPicture: false
    default property alias actions: buttons.data

    implicitHeight: column.implicitHeight + 2 * Metrics.sectionGap

    ColumnLayout {
        id: column

        anchors.horizontalCenter: parent.horizontalCenter
        // Where there is no room for all of it, its beginning stays in sight.
        y: Math.max(0, Math.round((parent.height - height) / 2))
        width: Math.min(parent.width - 2 * Metrics.screenMargin, Metrics.textBlockWidth)
        spacing: Metrics.rowSpacing

        Loader {
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: Metrics.rowSpacing
            // A screen has many of these states, and most are never seen.
            active: root.visible && root.hasRoom && root.theme.isKawaiiPink
            visible: active
            // A bound component could not be made by a loader that is of another file.
            // qmllint disable unqualified
            sourceComponent: KawaiiEmptyStateDecoration {
                theme: root.theme
            }
            // qmllint enable unqualified
        }
        SurfaceImage {
            objectName: "emblem"
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: Metrics.cardPadding
            Layout.preferredWidth: Metrics.emblem
            Layout.preferredHeight: Metrics.emblem
            visible: root.hasRoom && !root.theme.isKawaiiPink
            surface: root.isOnPicture ? Surfaces.progressTrackOf("transparent") : Surfaces.controlButton(root.theme, Metrics.emblem)

            Rectangle {
                anchors.fill: parent
                radius: width / 2
                color: Qt.alpha(root.symbolColor, Metrics.pressedOpacity)
                visible: root.isOnPicture
            }
            SymbolIcon {
                anchors.centerIn: parent
                name: root.systemImage
                size: Metrics.glyphOf(Metrics.emblem)
                color: root.symbolColor
            }
        }
        StyledText {
            Layout.fillWidth: true
            text: root.title
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            style: TextStyles.title2
            color: root.titleColor
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }
        QuietText {
            Layout.fillWidth: true
            text: root.description
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            style: TextStyles.subheadline
            color: root.descriptionColor
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            // What a server says can be long, and the buttons beneath must stay in sight.
            maximumLineCount: root.hasRoom ? 5 : 2
        }
        ColumnLayout {
            id: buttons

            Layout.topMargin: Metrics.screenMargin
            Layout.alignment: Qt.AlignHCenter
            spacing: Metrics.cardPadding
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The cover of a playlist, or its symbol where there is none.
Item {
    id: root

    /// Address of the cover provider; empty shows the symbol.
    property string source
    property int size: Metrics.rowCover
    property int cornerRadius: Metrics.coverRadius
    property AppTheme theme: ThemeEnvironment.theme

    implicitWidth: size
    implicitHeight: size
    Accessible.ignored: true

    ArtworkImageView {
        anchors.fill: parent
        visible: root.source !== ""
        source: root.source
        size: root.size
        cornerRadius: root.cornerRadius
    }
    Rectangle {
        objectName: "defaultCover"
        anchors.fill: parent
        visible: root.source === ""
        radius: root.cornerRadius
        color: Qt.alpha(root.theme.primaryColor, Metrics.pressedOpacity)

        ThemedIcon {
            anchors.centerIn: parent
            systemName: AppIcons.music.playlist
            kawaiiName: KawaiiIcon.playlist
            size: Math.round(root.size / 2)
            color: root.theme.primaryColor
            theme: root.theme
        }
    }
    ThemedArtworkModifier {
        anchors.fill: parent
        cornerRadius: root.cornerRadius
        theme: root.theme
    }
}

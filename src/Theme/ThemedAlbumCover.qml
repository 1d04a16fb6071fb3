// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A large cover on its shadow. Without a picture its room is filled.
Item {
    id: root

    /// Address of a picture, of a provider that knows of round corners, the file system or the program; empty shows
    /// none.
    property string image
    property real size: Metrics.albumCover
    property real cornerRadius: Metrics.cardRadius
    property bool showsShadow: true
    property AppTheme theme: ThemeEnvironment.theme

    readonly property string roundedImage: image === "" || image.startsWith("image://") ? image : "image://rounded/" + encodeURIComponent(image)

    implicitWidth: size
    implicitHeight: size
    Accessible.ignored: true

    Rectangle {
        objectName: "placeholder"
        anchors.fill: parent
        radius: root.cornerRadius
        color: root.theme.surfaceColor
        visible: !picture.isPicture
    }
    SteadyImage {
        id: picture

        objectName: "picture"
        anchors.fill: parent
        pictureSize: Qt.size(Math.round(root.size), Math.round(root.size))
        cornerRadius: root.cornerRadius
        source: root.roundedImage
    }
    AlbumCoverShadowModifier {
        anchors.fill: parent
        cornerRadius: root.cornerRadius
        showsShadow: root.showsShadow
        theme: root.theme
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Draws a surface behind what lies over this item: its shape fills the item, its shadows lie outside. A surface of
/// any size is stretched from one small picture where it can be.
Item {
    id: root

    /// One of those that Surfaces gives.
    property surface surface
    /// Pixels of the screen per pixel of the item.
    property real pixelRatio: Screen.devicePixelRatio
    /// Size of the shape in pixels of the screen.
    readonly property size shapeSize: Qt.size(Math.round(width * pixelRatio), Math.round(height * pixelRatio))
    /// Size that the shape has in a picture that is not stretched from a small one.
    property size pictureSize: shapeSize

    Accessible.ignored: true

    BorderImage {
        id: picture

        readonly property int margin: Math.round(root.surface.margin * root.pixelRatio)
        readonly property int borders: Math.round(root.surface.border * root.pixelRatio)
        /// Something thinner than its two borders is drawn as it is.
        readonly property bool isStretched: root.surface.isStretched && width >= 2 * borders && height >= 2 * borders
        readonly property string query: isStretched ? "" : "&width=" + root.pictureSize.width + "&height=" + root.pictureSize.height
        readonly property bool isSeen: root.shapeSize.width > 0 && root.shapeSize.height > 0 && root.surface.address !== ""

        objectName: "picture"
        x: -margin / root.pixelRatio
        y: x
        width: root.shapeSize.width + 2 * margin
        height: root.shapeSize.height + 2 * margin
        border.left: isStretched ? borders : 0
        border.top: border.left
        border.right: border.left
        border.bottom: border.left
        transformOrigin: Item.TopLeft
        scale: 1 / root.pixelRatio
        source: isSeen ? "image://surface/" + root.surface.address + "?ratio=" + root.pixelRatio + query : ""
    }
}

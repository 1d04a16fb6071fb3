// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// One picture of a blurred line of lyrics, its text where and as large as that of the sharp line would be.
Image {
    id: root

    /// What `source` was set to, which holds it in another form.
    property string wanted
    /// Font size and column of the text in the picture.
    property int drawnSize: 1
    property int drawnWidth: 0
    /// Font size that it is shown at.
    property real shownSize: drawnSize
    property bool isCentered: true
    property real pixelRatio: 1
    /// It stands for the line; else it is on its way out, or not there yet.
    property bool isFront: false
    property bool animates: true

    x: Math.round(isCentered ? (parent.width - width) / 2 : (drawnWidth - width) / 2)
    y: (parent.height - height) / 2
    width: implicitWidth / pixelRatio
    height: implicitHeight / pixelRatio
    transformOrigin: isCentered ? Item.Center : Item.Left
    scale: shownSize / drawnSize
    opacity: isFront ? 1 : 0
    visible: opacity > 0
    asynchronous: true
    Accessible.ignored: true

    /// Asks for another picture.
    function load(address: string, pixelSize: int, columnWidth: int): void {
        drawnSize = pixelSize;
        drawnWidth = columnWidth;
        wanted = address;
        source = address;
    }
    function unload(): void {
        wanted = "";
        source = "";
    }

    Behavior on opacity {
        enabled: root.animates

        NumberAnimation {
            duration: Motion.scaled(Metrics.lyricStyleDuration)
            easing.type: Easing.BezierSpline
            easing.bezierCurve: Motion.easeInOut
        }
    }
}

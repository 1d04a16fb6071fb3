// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// A picture that does not blink when it changes or grows: the one before stays, for a moment at most, until the next is
/// there. Of sizes that follow each other quickly few are drawn; in between the picture is stretched.
Item {
    id: root

    property string source
    /// Of its corners, in pixels of the window, for a provider that knows of round corners; below 0 is not told to it.
    property real cornerRadius: -1
    /// In pixels of the window; nothing is drawn before there is one.
    property size pictureSize: Qt.size(width, height)
    /// Of the picture that is wanted, as of an image.
    readonly property int status: wantsBack ? back.status : front.status
    /// Something is shown.
    readonly property bool isPicture: front.status === Image.Ready

    property Layer front: first
    property Layer back: second
    property bool wantsBack: false
    property bool isMade: false

    Accessible.ignored: true
    Component.onCompleted: {
        isMade = true;
        take();
    }
    onSourceChanged: take()
    onPictureSizeChanged: takeSize()
    onCornerRadiusChanged: takeSize()

    function takeSize(): void {
        if (!rest.running)
            take();
    }
    function address(): string {
        const radius = cornerRadius >= 0 ? (source.includes("?") ? "&" : "?") + "radius=" + (cornerRadius / pictureSize.width).toFixed(4) : "";
        return source + radius;
    }

    function take(): void {
        // Of its properties some are not set yet.
        if (!isMade)
            return;
        if (source === "" || pictureSize.width < 1 || pictureSize.height < 1) {
            wantsBack = false;
            patience.stop();
            front.source = "";
            back.source = "";
            return;
        }
        const wanted = address();
        wantsBack = String(front.source) !== wanted || front.sourceSize !== pictureSize;
        const isOther = front.picture !== source && String(front.source) !== "";
        if (!isOther)
            patience.stop();
        else if (!patience.running)
            patience.start();
        if (!wantsBack) {
            back.source = "";
            return;
        }
        if (back.sourceSize !== pictureSize || String(back.source) !== wanted) {
            // One after the other each of them would load something.
            back.source = "";
            back.sourceSize = pictureSize;
            back.picture = source;
            back.source = wanted;
            rest.restart();
        }
        look();
    }

    function look(): void {
        if (!wantsBack || back.status === Image.Loading || back.status === Image.Null)
            return;
        const old = front;
        front = back;
        back = old;
        wantsBack = false;
        patience.stop();
        back.source = "";
    }

    component Layer: Image {
        /// What it shows, in whatever size.
        property string picture

        anchors.fill: parent
        visible: root.front === this
        asynchronous: true
        fillMode: Image.PreserveAspectCrop
        onStatusChanged: root.look()
    }

    Layer {
        id: first
    }
    Layer {
        id: second
    }
    Timer {
        id: rest

        interval: Metrics.redrawInterval
        onTriggered: root.take()
    }
    // A song whose cover is long in coming is not shown with another one's.
    Timer {
        id: patience

        interval: Metrics.coverPatience
        onTriggered: root.front.source = ""
    }
}

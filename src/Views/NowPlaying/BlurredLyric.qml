// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Pictures of a line of lyrics that is out of focus. A new one comes in over the old one once it is drawn, so that
/// the line never goes missing.
Item {
    id: root

    /// Address of the picture that is wanted; empty for none.
    required property string source
    /// Font size and column of the text in it.
    required property int pixelSize
    required property int columnWidth
    /// Font size that the pictures are shown at.
    property real shownSize: pixelSize
    property bool isCentered: true
    property real pixelRatio: 1
    property bool animates: true
    /// A picture stands for the text.
    readonly property bool isThere: front !== null
    /// Neither a picture nor the text has been seen: the first of them needs no transition.
    property bool isFresh: true

    property LyricPicture front: null

    Accessible.ignored: true
    onSourceChanged: load()
    onFrontChanged: releaseOther()
    Component.onCompleted: load()

    function load(): void {
        if (source === "") {
            isFresh = false;
            front = null;
        } else if (front === null || front.wanted !== source) {
            const next = front === first ? second : first;
            next.load(source, pixelSize, columnWidth);
            take(next);
        }
        releaseOther();
    }

    /// Shows a picture that has come; one that cannot be had leaves the line to its text.
    function take(picture: LyricPicture): void {
        if (picture.wanted === "" || picture.wanted !== source)
            return;
        if (picture.status === Image.Ready)
            front = picture;
        if (picture.status === Image.Ready || picture.status === Image.Error)
            isFresh = false;
    }

    /// One that has not even begun to come in has nothing to fade.
    function releaseOther(): void {
        if (front !== first)
            release(first);
        if (front !== second)
            release(second);
    }

    /// Gives back a picture that has faded, or came too late, unless it is asked for anew.
    function release(picture: LyricPicture): void {
        if (picture.opacity === 0 && picture.wanted !== source)
            picture.unload();
    }

    LyricPicture {
        id: first

        shownSize: root.shownSize
        isCentered: root.isCentered
        pixelRatio: root.pixelRatio
        isFront: root.front === first
        animates: root.animates && !root.isFresh
        onStatusChanged: root.take(first)
        onOpacityChanged: root.release(first)
    }
    LyricPicture {
        id: second

        shownSize: root.shownSize
        isCentered: root.isCentered
        pixelRatio: root.pixelRatio
        isFront: root.front === second
        animates: root.animates && !root.isFresh
        onStatusChanged: root.take(second)
        onOpacityChanged: root.release(second)
    }
}

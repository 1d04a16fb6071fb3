// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// A picture that changes: the old one stays until the new one is there, then fades into it. Of addresses that follow
/// each other quickly the last one counts. A picture of a single pixel is none, as is an empty address; what lies
/// beneath shows then.
Item {
    id: root

    property string source
    /// Address of what is shown, or is fading in; empty for none.
    readonly property string shownSource: front.address
    /// Whether a picture hides all that lies beneath.
    readonly property bool isCovering: front.isPicture && !isFading
    /// From before a new picture is told until it alone is to be seen.
    property bool isFading: false

    property Layer front: first
    property Layer back: second
    /// What is shown first has nothing to come out of.
    property bool isFirst: true

    Accessible.ignored: true
    Component.onCompleted: {
        isFirst = source !== "";
        take();
    }
    onSourceChanged: take()

    /// Asks for the wanted picture, unless that is shown.
    function take(): void {
        if (isFading)
            return;
        back.address = source === front.address ? "" : source;
        look();
    }

    /// Shows the wanted picture once it is there.
    function look(): void {
        if (isFading || source === front.address || back.address !== source || !back.isThere)
            return;
        isFading = !isFirst && Metrics.fadeDuration > 0;
        const old = front;
        front = back;
        back = old;
        front.z = 1;
        back.z = 0;
        if (isFading)
            fade.start();
        else
            settle();
    }

    function settle(): void {
        isFirst = false;
        isFading = false;
        front.opacity = 1;
        back.opacity = 0;
        back.address = "";
        take();
    }

    component Layer: Image {
        property string address
        readonly property bool isThere: address === "" || status === Image.Ready || status === Image.Error
        readonly property bool isPicture: address !== "" && status === Image.Ready && implicitWidth > 1

        anchors.fill: parent
        opacity: 0
        visible: opacity > 0 && address !== ""
        asynchronous: true
        cache: false
        fillMode: Image.PreserveAspectCrop
        source: address
        Accessible.ignored: true
    }

    Layer {
        id: first

        objectName: "firstLayer"
        onIsThereChanged: root.look()
    }
    Layer {
        id: second

        objectName: "secondLayer"
        onIsThereChanged: root.look()
    }
    ParallelAnimation {
        id: fade

        onFinished: root.settle()

        NumberAnimation {
            target: root.front
            property: "opacity"
            to: 1
            duration: Metrics.fadeDuration
            easing.type: Easing.BezierSpline
            easing.bezierCurve: Motion.easeInOut
        }
        NumberAnimation {
            target: root.back
            property: "opacity"
            to: root.front.isPicture ? 1 : 0
            duration: Metrics.fadeDuration
            easing.type: Easing.BezierSpline
            easing.bezierCurve: Motion.easeInOut
        }
    }
}

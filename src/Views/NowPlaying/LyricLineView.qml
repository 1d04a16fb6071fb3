// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel
import Cadorel.Desktop

/// One line of lyrics, in the style that its distance from the current one gives it. Its text is broken for the
/// largest font size, so that a line that grows keeps its breaks. A double tap chooses the line.
Item {
    id: root

    required property int index
    required property string text
    required property bool isActive
    required property real pointSize
    required property bool isBold
    required property real lineOpacity
    required property real blurRadius
    required property real lineScale

    /// Font size of the current line.
    property real largestPointSize: pointSize
    property color textColor: ThemeEnvironment.theme.primaryTextColor
    property bool isCentered: true
    /// Changes are seen.
    property bool animates: true
    /// The keyboard stands on this line.
    property bool showsFocus: false
    property real pixelRatio: Screen.devicePixelRatio
    /// It is there, and not just being made: what changes from now on does so before the listener's eyes.
    property bool isMade: false

    readonly property int pixelSize: Math.round(pointSize * DesktopAppearance.textScale)
    readonly property int largestPixelSize: Math.round(largestPointSize * DesktopAppearance.textScale)
    /// What moves when the style changes: the font size that the line has room for, its scale and its opacity.
    property real roomSize: pixelSize
    property real shownScale: lineScale
    property real shownOpacity: lineOpacity
    readonly property string blurAddress: blurRadius <= 0 ? "" : "image://lyric/line?width=" + words.width + "&lines=" + Metrics.lyricMostRows + "&size=" + pixelSize + "&bold=" + isBold + "&align=" + (isCentered ? "center" : "left") + "&radius=" + blurRadius * DesktopAppearance.textScale + "&ratio=" + pixelRatio + "&color=" + encodeURIComponent(textColor.toString()) + "&text=" + encodeURIComponent(text)

    signal chosen

    implicitHeight: words.implicitHeight * roomSize / pixelSize
    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.description: "跳转到该位置播放"
    Accessible.focusable: true
    Accessible.selected: isActive
    Accessible.onPressAction: chosen()
    Component.onCompleted: isMade = true
    onIsActiveChanged: {
        if (isActive && isMade && animates && !Motion.isReduced)
            entrance.start();
        else
            entrance.finish();
    }

    Behavior on roomSize {
        enabled: root.animates

        StyleAnimation {}
    }
    Behavior on shownScale {
        enabled: root.animates

        StyleAnimation {}
    }
    Behavior on shownOpacity {
        enabled: root.animates

        StyleAnimation {}
    }

    TapHandler {
        margin: Metrics.lyricSpacing / 2
        onDoubleTapped: root.chosen()
    }
    HoverHandler {
        id: hover

        margin: Metrics.lyricSpacing / 2
    }

    Rectangle {
        anchors.fill: parent
        anchors.topMargin: -Metrics.lyricSpacing / 2
        anchors.bottomMargin: -Metrics.lyricSpacing / 2
        radius: Metrics.coverRadius
        color: root.textColor
        opacity: Metrics.hoverOpacity
        visible: hover.hovered
    }
    Item {
        id: body

        objectName: "body"
        anchors.fill: parent
        anchors.leftMargin: Metrics.lyricSpacing / 2
        anchors.rightMargin: Metrics.lyricSpacing / 2
        opacity: root.shownOpacity * entrance.opacity
        scale: entrance.scale
        transformOrigin: words.transformOrigin
        transform: Translate {
            x: entrance.offsetX
            y: entrance.offsetY
        }

        Text {
            id: words

            objectName: "words"
            x: root.isCentered ? Math.round((parent.width - width) / 2) : 0
            y: (parent.height - height) / 2
            // In steps: with each pixel of a window that is resized each blurred line would be drawn anew.
            width: Math.floor(parent.width * root.pixelSize / Math.max(root.pixelSize, root.largestPixelSize) / Metrics.lyricColumnStep) * Metrics.lyricColumnStep
            height: implicitHeight
            transformOrigin: root.isCentered ? Item.Center : Item.Left
            scale: root.roomSize * root.shownScale / root.pixelSize
            text: root.text
            textFormat: Text.PlainText
            color: root.textColor
            font.pixelSize: root.pixelSize
            font.weight: root.isBold ? Font.Bold : Font.Normal
            horizontalAlignment: root.isCentered ? Text.AlignHCenter : Text.AlignLeft
            wrapMode: Text.Wrap
            maximumLineCount: Metrics.lyricMostRows
            elide: Text.ElideRight
            opacity: root.blurAddress === "" || (!blur.isThere && !blur.isFresh) ? 1 : 0
            visible: opacity > 0
            Accessible.ignored: true

            Behavior on opacity {
                enabled: root.animates

                StyleAnimation {}
            }
        }
        BlurredLyric {
            id: blur

            anchors.fill: parent
            source: root.blurAddress
            pixelSize: root.pixelSize
            columnWidth: words.width
            shownSize: root.roomSize * root.shownScale
            isCentered: root.isCentered
            pixelRatio: root.pixelRatio
            animates: root.animates
        }
    }
    Rectangle {
        anchors.fill: parent
        anchors.topMargin: -Metrics.lyricSpacing / 2 + Metrics.focusRing
        anchors.bottomMargin: anchors.topMargin
        radius: Metrics.coverRadius
        color: "transparent"
        border.width: Metrics.focusRing
        border.color: root.textColor
        visible: root.showsFocus
    }

    LyricEntrance { id: entrance }

    component StyleAnimation: NumberAnimation {
        duration: Motion.scaled(Metrics.lyricStyleDuration)
        easing.type: Easing.BezierSpline
        easing.bezierCurve: Motion.easeInOut
    }
}

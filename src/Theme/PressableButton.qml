// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// What the button styles have in common: a ground and a scale that answer a press, and what every button owes to
/// keyboard, mouse and screen reader. `text` is its name; a button that shows something else than symbol and text
/// replaces `contentItem`.
T.AbstractButton {
    id: root

    property AppTheme theme: ThemeEnvironment.theme
    property real cornerRadius: Metrics.cardRadius
    property surface idleSurface
    property surface pressedSurface
    property real pressedScale: 1
    /// Of the spring that moves it, or the milliseconds of an ease-out; see ResponseSpring.
    property real response: 0.3
    property real damping: 0.6
    property int easeOut: 0
    property string symbol
    /// Colour of symbol and text: the accent, as far as it can be read while the button is pressed, too.
    property color ink: Surfaces.accentOn(theme, pressedSurface)
    /// The ground answers a press that is answered by nothing else.
    property bool tintsPress: false
    property TextStyle labelStyle: TextStyles.headline
    /// A tap that is over at once is seen, too.
    readonly property bool showsPress: down || answer.running
    /// From 0, idle, to 1, pressed; a spring goes a little beyond.
    property real depth: showsPress ? 1 : 0

    implicitWidth: Math.max(Metrics.touchTarget, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(Metrics.touchTarget, implicitContentHeight + topPadding + bottomPadding)
    leftPadding: Metrics.screenMargin
    rightPadding: Metrics.screenMargin
    // A click leaves the keyboard where it was, so that Space goes on playing and pausing.
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    opacity: enabled ? 1 : Metrics.disabledOpacity
    scale: Motion.isReduced ? 1 : 1 + (pressedScale - 1) * depth
    Accessible.name: text
    Accessible.onPressAction: pressAtOnce()
    Keys.onPressed: event => Press.holdBack(event)
    Keys.onReleased: event => Press.holdBack(event)
    Keys.onReturnPressed: event => pressByKey(event)
    Keys.onEnterPressed: event => pressByKey(event)
    onPressed: answer.restart()

    /// Without a finger or a mouse that stays down for a while.
    function pressAtOnce(): void {
        // A screen reader may ask for what is off.
        if (!enabled)
            return;
        answer.restart();
        clicked();
    }

    /// Once, however long the key is held down.
    function pressByKey(event: var): void {
        if (!event.isAutoRepeat)
            pressAtOnce();
    }

    Behavior on depth {
        ResponseSpring {
            objectName: "spring"
            response: root.response
            damping: root.damping
            easeOut: root.easeOut
        }
    }
    Timer {
        id: answer

        interval: Metrics.pressDuration
    }

    background: Item {
        SurfaceImage {
            objectName: "idle"
            anchors.fill: parent
            surface: root.idleSurface
            opacity: 1 - root.depth
        }
        SurfaceImage {
            objectName: "pressed"
            anchors.fill: parent
            surface: root.pressedSurface
            opacity: root.depth
        }
        ThemedHighlight {
            anchors.fill: parent
            radius: Math.min(root.cornerRadius, height / 2)
            isHovered: root.hovered && !root.showsPress
            isPressed: root.showsPress && root.tintsPress
            theme: root.theme
        }
        ThemedFocusRing {
            objectName: "focusRing"
            controlRadius: Math.min(root.cornerRadius, root.height / 2)
            theme: root.theme
            visible: root.visualFocus
        }
    }
    contentItem: PressableLabel {
        symbol: root.symbol
        text: root.text
        ink: root.ink
        style: root.labelStyle
    }
}

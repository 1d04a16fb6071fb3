// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Window
import Cadorel

/// The running song as a disc that floats over the screens. It fills the window and leaves all of it to what lies
/// beneath, but for the disc and its open fan.
FocusScope {
    id: root

    required property MiniPlayerViewModel miniPlayer
    /// What lies over the window's top, and what its bars take of it.
    property real topInset: 0
    property real bottomInset: MiniPlayerGeometry.tabBarHeight
    property AppTheme theme: ThemeEnvironment.theme

    readonly property bool isSeen: Motion.isSeen(visible, Window.visibility)
    readonly property bool isMaximized: Window.visibility === Window.Maximized || Window.visibility === Window.FullScreen
    readonly property bool isOpen: miniPlayer.isControlMode
    /// Centre of the disc as it is shown.
    readonly property point centre: Qt.point(centreX, centreY + shift)
    property real centreX: miniPlayer.effectivePosition.x
    property real centreY: miniPlayer.effectivePosition.y
    property real shift: isOpen ? miniPlayer.fanShift : 0
    property real openness: isOpen ? 1 : 0
    /// By what the disc had the keyboard before the fan took it.
    property int focusReason: Qt.OtherFocusReason
    /// What had the keyboard then, if it was not the disc.
    property Item focusBefore

    signal openRequested

    function pressKey(event: var): void {
        event.accepted = miniPlayer.pressKey(event.key, event.modifiers, event.isAutoRepeat);
    }
    function layOut(): void {
        miniPlayer.layOut(width, height, topInset, bottomInset, isMaximized);
    }
    /// The keys go to the fan.
    function lendKeyboard(): void {
        focusBefore = activeFocus ? null : Window.activeFocusItem;
        focusReason = floatingDisc.activeFocus ? floatingDisc.focusReason : Qt.OtherFocusReason;
        floatingDisc.forceActiveFocus(focusReason);
    }
    /// They go back to where they were, unless somebody else has taken them. A window that has lost them finds them there
    /// when it has them again.
    function giveKeyboardBack(): void {
        const before = focusBefore;
        focusBefore = null;
        if (!activeFocus && Window.active)
            return;
        if (before && before.visible && before.enabled)
            before.forceActiveFocus(Qt.OtherFocusReason);
        else
            floatingDisc.forceActiveFocus(focusReason);
    }

    onWidthChanged: layOut()
    onHeightChanged: layOut()
    onTopInsetChanged: layOut()
    onBottomInsetChanged: layOut()
    onIsMaximizedChanged: layOut()
    onIsSeenChanged: if (!isSeen) miniPlayer.cancel()
    onActiveFocusChanged: if (!activeFocus && miniPlayer.isFanPinned) miniPlayer.resetControlMode()
    Component.onCompleted: layOut()
    Component.onDestruction: miniPlayer.cancel()
    Keys.onPressed: event => pressKey(event)

    Behavior on centreX {
        enabled: root.miniPlayer.animatesPosition

        ResponseSpring {
            objectName: "snapSpringX"
            damping: 0.7
        }
    }
    Behavior on centreY {
        enabled: root.miniPlayer.animatesPosition

        ResponseSpring {
            objectName: "snapSpringY"
            damping: 0.7
        }
    }
    Behavior on shift {
        ResponseSpring {
            objectName: "shiftSpring"
            response: 0.2
            damping: 0.8
        }
    }
    Behavior on openness {
        ResponseSpring {
            objectName: "fanSpring"
            response: 0.2
            damping: 0.8
        }
    }
    Connections {
        target: root.miniPlayer

        function onOpenRequested(): void {
            root.openRequested();
        }
        function onIsFanPinnedChanged(): void {
            if (root.miniPlayer.isFanPinned)
                root.lendKeyboard();
            else
                root.giveKeyboardBack();
        }
    }

    // As with any menu, the press that closes the fan does nothing else.
    MouseArea {
        objectName: "besideFan"
        anchors.fill: parent
        enabled: root.miniPlayer.isFanPinned
        acceptedButtons: Qt.AllButtons
        onPressed: root.miniPlayer.resetControlMode()
    }

    Loader {
        id: controlOverlay

        active: root.isOpen || root.openness > 0
        anchors.fill: parent
        // A bound component could not be made for a view that lies in another one.
        // qmllint disable unqualified
        sourceComponent: MiniPlayerFan {
            objectName: "miniPlayerFan"
            miniPlayer: root.miniPlayer
            centre: root.centre
            openness: root.openness
            theme: root.theme
        }
        // qmllint enable unqualified
    }
    MiniPlayerDisc {
        id: floatingDisc

        objectName: "miniPlayerDisc"
        x: root.centre.x - width / 2
        y: root.centre.y - height / 2
        focus: true
        coverSource: root.miniPlayer.coverSource
        hasCover: root.miniPlayer.hasCover
        viewIdentity: root.miniPlayer.viewIdentity
        // Compared only.
        spinKey: root.miniPlayer.spinKey // qmllint disable type
        spins: root.miniPlayer.isSpinning && root.isSeen && !Motion.isReduced
        isLifted: root.miniPlayer.isDragging || root.isOpen
        isPointedAt: touch.containsMouse
        theme: root.theme
        scale: isLifted ? Metrics.liftedScale : 1
        text: root.miniPlayer.name
        Accessible.name: text
        Accessible.description: "单击打开播放界面；按住、点右键或按菜单键选择播放操作"
        Accessible.onPressAction: root.miniPlayer.open()
        Accessible.onToggleAction: root.miniPlayer.toggleFan()
        onClicked: root.miniPlayer.open()
        Keys.onSpacePressed: event => root.pressKey(event)
        Keys.onReturnPressed: event => root.pressKey(event)
        Keys.onEnterPressed: event => root.pressKey(event)

        Behavior on scale {
            ResponseSpring {
                damping: 0.8
            }
        }

        MouseArea {
            id: touch

            /// Where the mouse or the finger is in what the disc moves in.
            function place(x: real, y: real): point {
                return mapToItem(root, x, y);
            }

            objectName: "discTouch"
            anchors.fill: parent
            acceptedButtons: Qt.LeftButton | Qt.RightButton
            hoverEnabled: true
            preventStealing: true
            pressAndHoldInterval: MiniPlayerGeometry.holdMilliseconds
            containmentMask: RoundTouchArea {
                diameter: floatingDisc.width
            }
            onPressed: mouse => {
                if (mouse.button === Qt.LeftButton)
                    root.miniPlayer.press(place(mouse.x, mouse.y), Qt.point(root.centreX, root.centreY));
                else
                    root.miniPlayer.toggleFan();
            }
            onPositionChanged: mouse => {
                if (pressedButtons & Qt.LeftButton)
                    root.miniPlayer.move(place(mouse.x, mouse.y));
            }
            onPressAndHold: {
                if (pressedButtons & Qt.LeftButton)
                    root.miniPlayer.longPress();
            }
            onReleased: mouse => {
                if (mouse.button === Qt.LeftButton)
                    root.miniPlayer.release(place(mouse.x, mouse.y));
            }
            onCanceled: root.miniPlayer.cancel()
        }
        StyledToolTip {
            objectName: "discToolTip"
            text: root.miniPlayer.name
            visible: touch.containsMouse && !touch.pressed && !floatingDisc.isLifted
        }
    }
}

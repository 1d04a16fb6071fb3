// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// A card to choose, one of several: it says whether it is chosen, by a stroke and to screen readers, and answers
/// mouse, finger and keyboard. What it shows is its `contentItem`; `text` is its name.
// A screen reader learns what a button is from its type alone.
T.RadioButton {
    id: root

    property bool isSelected: false
    property AppTheme theme: ThemeEnvironment.theme
    property real cornerRadius: Metrics.cardRadius
    property surface ground: Surfaces.themedCard(theme, cornerRadius)
    property color strokeColor: theme.primaryColor
    readonly property real pressedScale: Metrics.pressedScale

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    checkable: false
    autoExclusive: false
    opacity: enabled ? 1 : Metrics.disabledOpacity
    scale: down && !Motion.isReduced ? pressedScale : 1
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: isSelected
    Accessible.onPressAction: Press.byAction(root)
    Keys.onReturnPressed: event => Press.byKey(root, event)
    Keys.onEnterPressed: event => Press.byKey(root, event)

    Behavior on scale {
        NumberAnimation {
            duration: Motion.scaled(Metrics.pressDuration)
            easing.type: Easing.BezierSpline
            easing.bezierCurve: Motion.easeOut
        }
    }

    background: Item {
        SurfaceImage {
            objectName: "ground"
            anchors.fill: parent
            surface: root.ground
        }
        ThemedHighlight {
            anchors.fill: parent
            radius: root.cornerRadius
            isHovered: root.hovered
            isPressed: root.down
            theme: root.theme
        }
        Rectangle {
            objectName: "selectionStroke"
            anchors.fill: parent
            radius: root.cornerRadius
            color: "transparent"
            border.width: Metrics.selectionStroke
            border.color: root.strokeColor
            visible: root.isSelected
        }
        ThemedFocusRing {
            controlRadius: root.cornerRadius
            theme: root.theme
            visible: root.visualFocus
        }
    }
}

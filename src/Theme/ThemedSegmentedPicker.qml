// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Cadorel

/// One choice of a few, which are all in sight. The arrow keys walk over them, Space and Return choose.
FocusScope {
    id: root

    /// What can be chosen, and which of it is. A choice is told; who keeps it sets `selection`.
    property var selection
    property var options: []
    /// The text of an option.
    property var label: option => String(option)
    property AppTheme theme: ThemeEnvironment.theme
    /// For screen readers.
    property string name

    readonly property int selectedIndex: options.indexOf(selection)
    // Labels lie on the track or on the pill, and can be read on both.
    readonly property color pillColor: theme.useNeumorphism ? theme.surfaceColor : theme.isDark ? Contrast.over(Qt.alpha(theme.primaryColor, 0.35), theme.surfaceColor) : SystemColors.segmentPill
    readonly property color selectedColor: Contrast.textOn(pillColor, theme.primaryColor)
    readonly property color otherColor: Surfaces.textOn(theme, Surfaces.themedSegmentedPicker(theme), theme.primaryTextColor)

    signal selected(var option)

    // From no choice to one there is no way to slide.
    onSelectedIndexChanged: {
        pill.slides = pill.place >= 0 && selectedIndex >= 0;
        pill.place = selectedIndex;
    }

    implicitWidth: options.length * Metrics.segmentWidth
    implicitHeight: Math.max(Metrics.touchTarget, TextStyles.subheadline.line + 2 * Metrics.rowSpacing + 2 * Metrics.grid)
    opacity: enabled ? 1 : Metrics.disabledOpacity
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    function textOf(option: var): string {
        const text = label;
        return text(option);
    }

    function walkTo(index: int): void {
        const segment = segments.itemAt(index);
        if (segment)
            segment.forceActiveFocus(Qt.TabFocusReason);
    }

    ThemedSegmentedPickerModifier {
        anchors.fill: parent
        theme: root.theme
    }
    Rectangle {
        id: pill

        // The place and not x is what moves: a window that is made wider moves nothing.
        property real place: 0
        property bool slides: false

        objectName: "pill"
        x: Metrics.grid + place * width
        y: Metrics.grid
        width: row.width / Math.max(1, root.options.length)
        height: root.height - 2 * Metrics.grid
        radius: Metrics.segmentRadius
        color: root.theme.useNeumorphism ? "transparent" : root.pillColor
        border.color: Qt.alpha(root.theme.primaryColor, 0.3)
        border.width: root.theme.useNeumorphism ? 0 : Metrics.hairline
        visible: root.selectedIndex >= 0

        Behavior on place {
            enabled: pill.slides

            NumberAnimation {
                objectName: "slide"
                duration: Motion.scaled(Metrics.segmentDuration)
                easing.type: Easing.BezierSpline
                easing.bezierCurve: Motion.easeInOut
            }
        }

        SurfaceImage {
            anchors.fill: parent
            surface: Surfaces.neumorphismRaised(root.theme, Metrics.segmentRadius)
            visible: root.theme.useNeumorphism
        }
    }
    Row {
        id: row

        anchors.fill: parent
        anchors.leftMargin: Metrics.grid
        anchors.rightMargin: Metrics.grid

        Repeater {
            id: segments

            model: root.options
            // A screen reader learns what a button is from its type alone.
            delegate: T.RadioButton {
                id: segment

                required property int index
                required property var modelData
                readonly property bool isSelected: index === root.selectedIndex
                readonly property bool isEntry: index === Math.max(0, root.selectedIndex)

                objectName: root.objectName + index
                width: pill.width
                height: row.height
                // The whole height answers a finger.
                topInset: Metrics.grid
                bottomInset: Metrics.grid
                leftPadding: Metrics.grid
                rightPadding: Metrics.grid
                // One stop of the Tab key, as radio buttons are: where the keyboard is, else what is chosen.
                focus: isEntry
                focusPolicy: (root.activeFocus ? activeFocus : isEntry) ? Qt.TabFocus : Qt.NoFocus
                hoverEnabled: true
                text: root.textOf(modelData)
                checkable: false
                autoExclusive: false
                Accessible.name: text
                Accessible.checkable: true
                Accessible.checked: isSelected
                Accessible.onPressAction: Press.byAction(segment)
                Keys.onReturnPressed: event => Press.byKey(segment, event)
                Keys.onEnterPressed: event => Press.byKey(segment, event)
                Keys.onLeftPressed: root.walkTo(index - 1)
                Keys.onRightPressed: root.walkTo(index + 1)
                onClicked: {
                    if (!isSelected)
                        root.selected(modelData);
                }

                background: ThemedHighlight {
                    radius: Metrics.segmentRadius
                    isHovered: segment.hovered && !segment.isSelected
                    isPressed: segment.down && !segment.isSelected
                    theme: root.theme

                    ThemedFocusRing {
                        objectName: "focusRing"
                        controlRadius: Metrics.segmentRadius
                        outset: 0
                        theme: root.theme
                        border.color: segment.isSelected ? root.selectedColor : root.theme.primaryColor
                        visible: segment.visualFocus
                    }
                }
                contentItem: StyledText {
                    text: segment.text
                    style: TextStyles.subheadline
                    font.weight: segment.isSelected ? Font.DemiBold : Font.Normal
                    color: segment.isSelected ? root.selectedColor : root.otherColor
                    horizontalAlignment: Text.AlignHCenter
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: Metrics.smallLabel
                }
            }
        }
    }
}

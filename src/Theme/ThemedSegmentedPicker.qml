// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T

/// One choice of a few, which are all in sight. The arrow keys walk over them, Space and Return choose.
FocusScope {
    id: root

    /// What can be chosen, and what is. A choice is told and shown at once; who keeps it sets it again.
    property var selection
    property var options: []
    /// The text of an option.
    property var label: option => String(option)
    property AppTheme theme: ThemeEnvironment.theme
    /// For screen readers.
    property string name

    readonly property int selectedIndex: options.indexOf(selection)
    /// Every label lies on the ground of the look or on the knob; both let it be read.
    readonly property color knobColor: theme.useNeumorphism ? theme.surfaceColor : Contrast.groundFor("white", theme.primaryColor)
    readonly property color selectedColor: theme.useNeumorphism ? theme.primaryTextColor : "white"
    readonly property color otherColor: theme.useNeumorphism ? Contrast.textOn(theme.surfaceColor, theme.secondaryTextColor) : Contrast.textOn(theme.backgroundColor, theme.primaryTextColor)

    signal selected(var option)

    implicitWidth: options.length * Metrics.segmentWidth
    implicitHeight: Math.max(Metrics.touchTarget, TextStyles.subheadline.line + 2 * Metrics.rowSpacing + 2 * Metrics.grid)
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    function walkTo(index: int): void {
        const segment = segments.itemAt(index);
        if (segment)
            segment.forceActiveFocus(Qt.TabFocusReason);
    }

    ThemedSegmentedPickerModifier {
        anchors.fill: parent
        theme: root.theme
    }
    Item {
        anchors.fill: parent
        anchors.margins: Metrics.grid

        Rectangle {
            id: flatKnob

            objectName: "knob"
            x: Math.max(0, root.selectedIndex) * width
            width: root.options.length > 0 ? parent.width / root.options.length : 0
            height: parent.height
            radius: Metrics.segmentRadius
            color: root.theme.useNeumorphism ? "transparent" : root.knobColor
            visible: root.selectedIndex >= 0

            Behavior on x {
                NumberAnimation {
                    duration: Motion.scaled(200)
                    easing.type: Easing.InOutQuad
                }
            }

            SurfaceImage {
                anchors.fill: parent
                surface: Surfaces.neumorphismRaised(root.theme, Metrics.segmentRadius)
                visible: root.theme.useNeumorphism
            }
        }
        Row {
            anchors.fill: parent

            Repeater {
                id: segments

                model: root.options
                // A screen reader learns what a button is from its type alone.
                delegate: T.RadioButton {
                    id: segment

                    required property int index
                    required property var modelData
                    readonly property bool isSelected: index === root.selectedIndex

                    objectName: root.objectName + index
                    width: parent ? parent.width / segments.count : 0
                    height: parent ? parent.height : 0
                    focusPolicy: Qt.TabFocus
                    hoverEnabled: true
                    text: root.label(modelData)
                    checkable: false
                    autoExclusive: false
                    Accessible.name: text
                    Accessible.checkable: true
                    Accessible.checked: isSelected
                    Accessible.onPressAction: segment.clicked()
                    Keys.onReturnPressed: segment.clicked()
                    Keys.onEnterPressed: segment.clicked()
                    Keys.onLeftPressed: root.walkTo(index - 1)
                    Keys.onRightPressed: root.walkTo(index + 1)
                    onClicked: {
                        if (!isSelected)
                            root.selected(modelData);
                    }

                    background: Item {
                        Rectangle {
                            anchors.fill: parent
                            radius: Metrics.segmentRadius
                            color: segment.isSelected ? "transparent" : segment.down ? SystemColors.pressed : segment.hovered ? SystemColors.hover : "transparent"
                        }
                        ThemedFocusRing {
                            anchors.margins: 0
                            radius: Metrics.segmentRadius
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
                    }
                }
            }
        }
    }
}

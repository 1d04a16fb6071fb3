// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T

/// One choice of a few, which are all in sight. The arrow keys walk over them, Space and Return choose.
FocusScope {
    id: root

    /// Texts, a list of them.
    required property var options
    property int current: 0
    property string name
    property color track: SystemColors.secondaryBackground

    signal chosen(int index)

    implicitHeight: Metrics.touchTarget
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    function walkTo(index: int): void {
        const segment = segments.itemAt(index);
        if (segment)
            segment.forceActiveFocus(Qt.TabFocusReason);
    }

    Rectangle {
        anchors.fill: parent
        anchors.topMargin: Metrics.grid
        anchors.bottomMargin: Metrics.grid
        radius: Metrics.controlRadius
        color: SystemColors.track
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
                required property string modelData
                readonly property bool isSelected: index === root.current

                objectName: root.objectName + index
                width: root.width / segments.count
                height: root.height
                focusPolicy: Qt.TabFocus
                hoverEnabled: true
                text: modelData
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
                onClicked: root.chosen(index)

                background: Item {
                    Rectangle {
                        anchors.fill: parent
                        anchors.margins: Metrics.grid
                        anchors.topMargin: Metrics.grid + Metrics.focusRing
                        anchors.bottomMargin: Metrics.grid + Metrics.focusRing
                        radius: Metrics.coverRadius
                        color: segment.isSelected ? SystemColors.accentTint : segment.down ? SystemColors.pressed : segment.hovered ? SystemColors.hover : "transparent"

                        FocusRing {
                            radius: parent.radius
                            visible: segment.visualFocus
                        }
                    }
                }
                contentItem: StyledText {
                    text: segment.text
                    style: TextStyles.subheadline
                    font.weight: segment.isSelected ? Font.DemiBold : Font.Normal
                    horizontalAlignment: Text.AlignHCenter
                }
            }
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic

/// One of a few choices, side by side. The arrow keys walk from one to the next.
FocusScope {
    id: root

    required property list<string> choices
    property int currentIndex: 0
    /// What is chosen here.
    property string label

    /// The listener wants another one.
    signal chosen(int index)

    implicitHeight: Metrics.touchTarget
    Accessible.role: Accessible.Grouping
    Accessible.name: label

    function walkTo(index: int): void {
        if (index < 0 || index >= choices.length)
            return;
        chosen(index);
        segments.itemAt(index).forceActiveFocus(Qt.TabFocusReason);
    }

    Keys.onLeftPressed: walkTo(currentIndex - 1)
    Keys.onRightPressed: walkTo(currentIndex + 1)

    Rectangle {
        anchors.fill: parent
        radius: Metrics.controlRadius
        color: SystemColors.track
    }
    Row {
        anchors.fill: parent

        Repeater {
            id: segments

            model: root.choices

            AbstractButton {
                id: segment

                required property int index
                required property string modelData
                readonly property bool isChosen: index === root.currentIndex

                width: root.width / root.choices.length
                height: root.height
                focusPolicy: isChosen ? Qt.TabFocus : Qt.NoFocus
                focus: isChosen
                hoverEnabled: true
                text: modelData
                Accessible.role: Accessible.RadioButton
                Accessible.name: text
                Accessible.checkable: true
                Accessible.checked: isChosen
                Accessible.onPressAction: segment.clicked()
                onClicked: root.chosen(index)

                background: Item {
                    Rectangle {
                        anchors.fill: parent
                        anchors.margins: Metrics.focusRing
                        radius: Metrics.coverRadius
                        color: segment.isChosen ? SystemColors.tertiaryBackground : segment.down ? SystemColors.pressed : segment.hovered ? SystemColors.hover : "transparent"

                        FocusRing {
                            radius: parent.radius
                            visible: segment.visualFocus
                        }
                    }
                }
                contentItem: StyledText {
                    text: segment.text
                    style: segment.isChosen ? TextStyles.headline : TextStyles.body
                    horizontalAlignment: Text.AlignHCenter
                }
            }
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A number of the cassette: its name and value, and beneath them a slider between two buttons that go a step.
Item {
    id: root

    required property string title
    required property real value
    required property string displayValue
    /// A NumberRange.
    required property numberRange range
    required property real step
    property AppTheme theme: ThemeEnvironment.theme

    // The value is kept with single precision.
    readonly property real tolerance: step / 100

    signal updated(real value)

    /// A step from where it stands, within the range.
    function move(by: real): void {
        updated(Math.max(range.from, Math.min(range.to, value + by)));
    }

    width: parent?.width ?? implicitWidth
    implicitWidth: Metrics.menuWidth
    implicitHeight: Metrics.rowSpacing + label.implicitHeight + Metrics.touchTarget

    SettingRowLabel {
        id: label

        x: Metrics.cardPadding
        y: Metrics.rowSpacing
        width: parent.width - 2 * Metrics.cardPadding
        title: root.title
        valueText: root.displayValue
        theme: root.theme
    }
    ThemedIconButton {
        id: less

        objectName: root.objectName + "Less"
        anchors.left: parent.left
        anchors.top: label.bottom
        symbol: AppIcons.action.removeCircle
        text: "减小" + root.title
        color: root.theme.primaryColor
        theme: root.theme
        enabled: root.value > root.range.from + root.tolerance
        onClicked: root.move(-root.step)
    }
    SettingSlider {
        objectName: root.objectName + "Slider"
        anchors.left: less.right
        anchors.right: more.left
        anchors.verticalCenter: less.verticalCenter
        from: root.range.from
        to: root.range.to
        stepSize: root.step
        name: root.title
        valueText: root.displayValue
        shown: root.value
        onWanted: value => root.updated(value)
    }
    ThemedIconButton {
        id: more

        objectName: root.objectName + "More"
        anchors.right: parent.right
        anchors.top: label.bottom
        symbol: AppIcons.action.addCircle
        text: "增大" + root.title
        color: root.theme.primaryColor
        theme: root.theme
        enabled: root.value < root.range.to - root.tolerance
        onClicked: root.move(root.step)
    }
}

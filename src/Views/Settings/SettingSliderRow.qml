// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A setting that is a number: its name, the number, and beneath them a slider.
Item {
    id: root

    property string title
    property string valueText
    property alias from: slider.from
    property alias to: slider.to
    property alias stepSize: slider.stepSize
    property real shown: 0
    property AppTheme theme: ThemeEnvironment.theme

    signal wanted(real value)

    width: parent?.width ?? implicitWidth
    implicitWidth: Metrics.menuWidth
    implicitHeight: Metrics.rowSpacing + label.implicitHeight + slider.implicitHeight + Metrics.rowSpacing

    SettingRowLabel {
        id: label

        x: Metrics.cardPadding
        y: Metrics.rowSpacing
        width: parent.width - 2 * Metrics.cardPadding
        title: root.title
        valueText: root.valueText
        theme: root.theme
    }
    SettingSlider {
        id: slider

        objectName: root.objectName + "Slider"
        anchors.left: label.left
        anchors.right: label.right
        anchors.top: label.bottom
        name: root.title
        valueText: root.valueText
        shown: root.shown
        onWanted: value => root.wanted(value)
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Cadorel

/// A slider that shows what is published and asks for what the listener wants.
SlimSlider {
    id: root

    required property string name
    required property string valueText
    /// As published.
    required property real shown
    readonly property real within: Math.max(from, Math.min(to, shown))
    /// What two numbers of one place of the slider may differ by: some are kept with single precision.
    readonly property real tolerance: (to - from) / 100000

    property bool isReady: false

    signal wanted(real value)

    Component.onCompleted: isReady = true
    snapMode: Slider.SnapAlways
    Accessible.name: name
    Accessible.description: valueText
    // A screen reader sets the value as a drag does; so does a slider that is not yet complete.
    onValueChanged: {
        if (isReady && Math.abs(value - within) > tolerance)
            wanted(value);
    }

    Binding on value {
        value: root.within
        when: !root.pressed
        restoreMode: Binding.RestoreNone
    }
}

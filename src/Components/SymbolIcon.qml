// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A symbol in one colour; decoration, so what it stands for is said by the control around it.
Image {
    /// A symbol, most often a constant of AppIcons. Empty draws nothing, an unknown one is a circle.
    required property string name
    property color color: ThemeEnvironment.theme.primaryTextColor
    property int size: Metrics.symbol

    width: size
    height: size
    sourceSize.width: size
    sourceSize.height: size
    source: name === "" ? "" : "image://symbol/" + encodeURIComponent(name) + "?color=" + encodeURIComponent(color.toString())
    Accessible.ignored: true
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A picture asset at a size.
Image {
    required property string name
    required property int size

    width: size
    height: size
    fillMode: Image.PreserveAspectFit
    sourceSize.width: size
    sourceSize.height: size
    source: KawaiiIcon.artworkFile(name)
    Accessible.ignored: true
}

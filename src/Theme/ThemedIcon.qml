// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Window
import Cadorel

/// A symbol, or in the pink look the drawn picture that stands for it. Decoration: the control around it says
/// what it is for.
Item {
    id: root

    property string systemName
    /// Name of the picture; empty or unknown leaves the symbol in every look.
    property string kawaiiName
    property real size: Metrics.symbol
    property AppTheme theme: ThemeEnvironment.theme
    /// Of the symbol; a picture has its own.
    property color color: theme.primaryTextColor

    readonly property bool isPicture: theme.isKawaiiPink && String(artworkFile) !== ""
    readonly property url artworkFile: kawaiiName !== "" ? KawaiiIcon.artworkFile(kawaiiName) : ""

    implicitWidth: size
    implicitHeight: size
    Accessible.ignored: true

    SymbolIcon {
        objectName: "symbol"
        name: root.isPicture ? "" : root.systemName
        size: root.size
        color: root.color
    }
    Image {
        objectName: "picture"
        width: root.size
        height: root.size
        fillMode: Image.PreserveAspectFit
        sourceSize.width: root.size
        sourceSize.height: root.size
        asynchronous: true
        source: root.isPicture ? root.artworkFile : ""
    }
}

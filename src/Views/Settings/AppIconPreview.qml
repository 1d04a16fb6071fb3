// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The picture of an application icon; a symbol where there is none.
Item {
    id: root

    /// Name of its picture.
    property string imageName
    property real size: Metrics.appIconSize
    property color color: ThemeEnvironment.theme.secondaryTextColor
    readonly property string file: AppIconService.picture(imageName)

    implicitWidth: size
    implicitHeight: size
    Accessible.ignored: true

    Image {
        id: picture

        objectName: "picture"
        anchors.fill: parent
        asynchronous: true
        sourceSize.width: Math.ceil(root.size)
        sourceSize.height: Math.ceil(root.size)
        source: root.file
    }
    SymbolIcon {
        objectName: "symbol"
        anchors.centerIn: parent
        visible: root.file === "" || picture.status === Image.Error
        name: AppIcons.misc.app
        size: Math.round(root.size)
        color: root.color
    }
}

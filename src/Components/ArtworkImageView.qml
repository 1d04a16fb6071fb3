// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// A square cover with round corners. While it is being decoded its room is filled.
Item {
    id: root

    /// Address of the cover provider; empty shows the placeholder.
    property string source
    property int size: Metrics.rowCover
    property int cornerRadius: size > 100 ? 12 : 6

    implicitWidth: size
    implicitHeight: size
    Accessible.ignored: true

    Rectangle {
        anchors.fill: parent
        radius: root.cornerRadius
        color: SystemColors.coverFill
        visible: picture.status !== Image.Ready
    }

    Image {
        id: picture

        objectName: "picture"
        anchors.fill: parent
        asynchronous: true
        sourceSize.width: root.size
        sourceSize.height: root.size
        source: (root.source === "" ? "image://cover/none" : root.source) + "?radius=" + (root.cornerRadius / root.size).toFixed(4)
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A cover in the label of a cassette; without a cassette, the cover alone.
Item {
    id: root

    /// Name of the cassette's picture; empty for none.
    property string imageName
    /// Address of the cover provider; empty shows the note that stands for a cover.
    property string coverSource
    /// How large the cover is and how far from the centre, as fractions of the picture; see CassetteLayout.
    property real configScale: 1
    property real offsetX: 0
    property real offsetY: 0
    /// Of a cover without a cassette.
    property real cornerRadius: Metrics.cardRadius
    /// Side of the square picture, which lies in the middle of the item.
    readonly property real side: Math.max(0, Math.min(width, height))
    readonly property rect coverRect: CassetteLayout.coverRect(side, configScale, offsetX, offsetY)

    implicitWidth: Metrics.cassetteSize
    implicitHeight: Metrics.cassetteSize
    Accessible.ignored: true

    Item {
        anchors.centerIn: parent
        width: root.side
        height: root.side

        SteadyImage {
            objectName: "cassette"
            anchors.fill: parent
            pictureSize: Qt.size(Math.ceil(root.side), Math.ceil(root.side))
            source: root.imageName !== "" && root.side > 0 ? KawaiiIcon.artworkFile(root.imageName) : ""
        }
        Item {
            id: cover

            readonly property int cornerRadius: Math.round(root.imageName === "" ? Math.min(root.cornerRadius, width / 2) : CassetteLayout.coverRadius(width))

            objectName: "cover"
            x: Math.round(root.coverRect.x)
            y: Math.round(root.coverRect.y)
            width: Math.max(1, Math.round(root.coverRect.width))
            height: width
            visible: root.coverRect.width > 0

            // The note that stands for a cover lets through what lies beneath: the drawing of the label.
            Rectangle {
                objectName: "paper"
                anchors.fill: parent
                anchors.margins: Metrics.hairline
                radius: cover.cornerRadius
                color: SystemColors.labelPaper
                visible: root.imageName !== ""
            }
            Rectangle {
                anchors.fill: parent
                radius: cover.cornerRadius
                color: SystemColors.coverFill
                visible: !picture.isPicture
            }
            SteadyImage {
                id: picture

                objectName: "picture"
                anchors.fill: parent
                cornerRadius: cover.cornerRadius
                source: root.coverSource !== "" ? root.coverSource : "image://cover/none"
            }
        }
    }
}

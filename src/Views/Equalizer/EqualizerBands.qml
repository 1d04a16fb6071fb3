// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// Ten sliders side by side, each with its gain above and its tone beneath.
ThemedCard {
    id: root

    required property EqualizerViewModel equalizer
    /// Height of the sliders alone.
    required property int sliderLength
    /// The wheel may move a slider that it happens to be over.
    property bool takesWheel: false
    /// A finger or the mouse holds a slider.
    readonly property bool isHeld: heldBand >= 0
    property int heldBand: -1

    implicitHeight: gains.implicitHeight + 2 * Metrics.cardPadding
    Accessible.role: Accessible.Grouping
    Accessible.name: "频段"

    // Where a band leaves the sound as it is.
    Hairline {
        x: Metrics.cardPadding
        y: gains.y + TextStyles.caption2.line + Metrics.grid + Math.round((root.sliderLength - height) / 2)
        width: parent.width - 2 * x
    }
    Row {
        id: gains

        y: Metrics.cardPadding
        width: parent.width

        Repeater {
            id: bands

            model: root.equalizer.bands
            delegate: Column {
                id: band

                required property int index
                required property string label
                required property string spokenName
                required property real gain
                required property string gainText

                width: gains.width / bands.count
                spacing: Metrics.grid

                QuietText {
                    objectName: "bandText" + band.index
                    width: parent.width
                    height: TextStyles.caption2.line
                    text: band.gainText
                    style: TextStyles.caption2
                    // Ten numbers of four digits on the narrowest window.
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: Metrics.smallestText
                    elide: Text.ElideNone
                    horizontalAlignment: Text.AlignHCenter
                    Accessible.ignored: true
                }
                GainSlider {
                    objectName: "band" + band.index
                    width: parent.width
                    height: root.sliderLength
                    orientation: Qt.Vertical
                    from: root.equalizer.lowestGain
                    to: root.equalizer.highestGain
                    gain: band.gain
                    gainText: band.gainText
                    name: band.spokenName
                    isHeard: root.equalizer.isEnabled
                    wheelEnabled: root.takesWheel || activeFocus
                    onPressedChanged: root.heldBand = pressed ? band.index : -1
                    onGainRequested: decibels => root.equalizer.setBand(band.index, decibels)
                }
                StyledText {
                    width: parent.width
                    text: band.label
                    style: TextStyles.caption2
                    elide: Text.ElideNone
                    horizontalAlignment: Text.AlignHCenter
                    Accessible.ignored: true
                }
            }
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Cadorel

/// The equalizer: its switch, the presets, ten bands and the gain before them. Every change is heard at once.
BottomSheet {
    id: root

    required property EqualizerViewModel equalizer

    readonly property bool scrolls: flickable.contentHeight > flickable.height

    title: "均衡器"
    cancelName: "equalizerClose"
    cancelText: "关闭"
    acceptName: "equalizerReset"
    acceptText: "重置"
    canAccept: equalizer.canReset
    height: Math.min(room, Metrics.touchTarget + Metrics.rowSpacing + Metrics.hairline + flickable.contentHeight)
    visible: equalizer.isOpen
    onAboutToShow: presetRow.revealCurrent()
    onOpened: {
        // The first time there were no presets yet when it began to rise.
        presetRow.revealCurrent();
        enabledSwitch.forceActiveFocus(Qt.OtherFocusReason);
    }
    onClosed: equalizer.close()
    onAccepted: {
        equalizer.reset();
        // The button has nothing left to do, and would keep the keyboard.
        enabledSwitch.forceActiveFocus(Qt.OtherFocusReason);
    }

    Hairline {
        Layout.fillWidth: true
    }
    FormFlickable {
        id: flickable

        objectName: "equalizerScroller"
        Layout.fillWidth: true
        Layout.fillHeight: true
        // An upright drag on a slider would scroll the sheet.
        interactive: !bands.isHeld && !preamp.pressed
        contentHeight: fields.implicitHeight + Metrics.screenMargin + Metrics.sectionGap

        Column {
            id: fields

            x: Metrics.screenMargin
            y: Metrics.screenMargin
            width: flickable.width - 2 * Metrics.screenMargin
            spacing: Metrics.cardPadding

            SwitchRow {
                id: enabledSwitch

                objectName: "equalizerSwitch"
                width: parent.width
                text: "启用均衡器"
                checked: root.equalizer.isEnabled
                Accessible.description: root.equalizer.statusText
                onToggled: root.equalizer.isEnabled = checked
            }
            Item {
                width: parent.width
                height: Math.max(bars.height, status.height)

                LevelBars {
                    id: bars

                    objectName: "levelBars"
                    anchors.left: parent.left
                    anchors.leftMargin: Metrics.cardPadding
                    anchors.verticalCenter: parent.verticalCenter
                    player: root.equalizer.audioPlayer
                    color: root.equalizer.isEnabled ? ThemeEnvironment.theme.primaryColor : ThemeEnvironment.theme.secondaryTextColor
                }
                QuietText {
                    id: status

                    objectName: "equalizerStatus"
                    anchors.left: bars.right
                    anchors.leftMargin: Metrics.cardPadding
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    text: root.equalizer.statusText
                    wrapMode: Text.Wrap
                }
            }
            Column {
                width: parent.width
                spacing: Metrics.grid

                EqualizerPresetRow {
                    id: presetRow

                    objectName: "presetRow"
                    x: -Metrics.screenMargin
                    width: flickable.width
                    equalizer: root.equalizer
                }
                QuietText {
                    objectName: "presetDescription"
                    width: parent.width
                    text: root.equalizer.presetDescription
                    horizontalAlignment: Text.AlignHCenter
                }
            }
            EqualizerBands {
                id: bands

                objectName: "equalizerBands"
                width: parent.width
                equalizer: root.equalizer
                sliderLength: root.room < Metrics.equalizerRoom ? Metrics.shortGainLength : Metrics.gainLength
                takesWheel: !root.scrolls
            }
            ThemedCard {
                width: parent.width
                height: preamp.y + preamp.height

                StyledText {
                    id: preampName

                    anchors.left: parent.left
                    anchors.leftMargin: Metrics.cardPadding
                    anchors.right: preampText.left
                    y: Metrics.rowSpacing
                    text: "前级增益"
                    style: TextStyles.subheadline
                }
                QuietText {
                    id: preampText

                    objectName: "preampText"
                    anchors.right: parent.right
                    anchors.rightMargin: Metrics.cardPadding
                    anchors.baseline: preampName.baseline
                    text: root.equalizer.preampText + " dB"
                    style: TextStyles.subheadline
                    elide: Text.ElideNone
                }
                GainSlider {
                    id: preamp

                    objectName: "preamp"
                    anchors.left: parent.left
                    anchors.right: parent.right
                    anchors.leftMargin: Metrics.cardPadding
                    anchors.rightMargin: Metrics.cardPadding
                    anchors.top: preampName.bottom
                    from: root.equalizer.lowestGain
                    to: root.equalizer.highestGain
                    gain: root.equalizer.preampGain
                    gainText: root.equalizer.preampText
                    name: preampName.text
                    isHeard: root.equalizer.isEnabled
                    wheelEnabled: !root.scrolls || activeFocus
                    onGainRequested: decibels => root.equalizer.setPreampGain(decibels)
                }
            }
        }
    }
}

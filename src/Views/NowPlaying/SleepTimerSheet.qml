// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// In how many minutes the music shall end. The minutes are written down, and that is all: nothing ends.
ThemedSheet {
    id: root

    required property SleepTimerViewModel sleep

    title: "定时关闭"
    acceptName: "sleepTimerDone"

    ThemedSettingsSection {
        width: parent.width
        title: "快捷选项"
        seamInset: Metrics.cardPadding

        Repeater {
            model: root.sleep.presetOptions

            delegate: SheetChoice {
                required property int modelData

                objectName: "sleepPreset" + modelData
                text: root.sleep.formatTime(modelData)
                isSelected: modelData === root.sleep.sleepTimerMinutes
                onClicked: root.sleep.select(modelData)
            }
        }
        SheetChoice {
            objectName: "sleepOff"
            text: "关闭"
            isSelected: root.sleep.sleepTimerMinutes === 0
            onClicked: root.sleep.select(0)
        }
    }
    ThemedSettingsSection {
        width: parent.width
        title: "自定义时间"

        SheetRow {
            objectName: "sleepCustom"
            text: "设置自定义时间"
            detail: root.sleep.isCustom ? root.sleep.timeText : ""
            mark: root.sleep.isCustom ? AppIcons.status.checkmark : AppIcons.navigation.forward
            markColor: root.sleep.isCustom ? Surfaces.accentOn(root.theme, Surfaces.themedCard(root.theme)) : quietMark
            onClicked: root.sleep.beginCustom()
        }
    }

    foot: Item {
        objectName: "sleepFoot"
        width: root.width
        height: visible ? Math.max(footText.implicitHeight, Metrics.symbolSmall) + 2 * Metrics.cardPadding : 0
        visible: root.sleep.footText !== ""

        SymbolIcon {
            id: moon

            anchors.left: footText.left
            anchors.leftMargin: Math.max(0, (footText.width - footText.contentWidth) / 2) - width - Metrics.rowSpacing
            anchors.verticalCenter: parent.verticalCenter
            name: AppIcons.timer.sleep
            size: Metrics.symbolSmall
            color: footText.color
        }
        StyledText {
            id: footText

            objectName: "sleepFootText"
            anchors.centerIn: parent
            width: parent.width - 2 * (Metrics.screenMargin + Metrics.symbolSmall + Metrics.rowSpacing)
            text: root.sleep.footText
            style: TextStyles.subheadline
            color: Surfaces.accentOn(root.theme, Surfaces.background(root.theme))
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    CustomTimePicker {
        objectName: "customTimePicker"
        sleep: root.sleep
        theme: root.theme
    }
}

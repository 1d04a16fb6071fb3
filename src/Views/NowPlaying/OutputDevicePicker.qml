// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// What the player plays on. A choice is heard at once.
ThemedSheet {
    id: root

    required property OutputDevicesViewModel devices

    title: "播放设备"
    acceptName: "outputDevicesDone"
    visible: devices.isOpen
    onClosed: devices.close()
    Component.onDestruction: devices?.close()

    StyledText {
        objectName: "deviceNotice"
        width: parent.width
        visible: text !== ""
        text: root.devices.notice
        style: TextStyles.subheadline
        color: Surfaces.accentOn(root.theme, Surfaces.background(root.theme))
        wrapMode: Text.Wrap
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
    ThemedSettingsSection {
        width: parent.width
        visible: root.devices.hasDevices

        Repeater {
            model: root.devices.devices

            delegate: SheetChoice {
                required property int index
                required property string name
                required property bool isChosen
                required symbol
                required detail

                objectName: "device" + index
                label: name
                isSelected: isChosen
                onClicked: root.devices.choose(index)
            }
        }
    }
    Column {
        width: parent.width
        topPadding: Metrics.sectionGap
        bottomPadding: Metrics.sectionGap
        spacing: Metrics.cardPadding
        visible: !root.devices.hasDevices

        SymbolIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            name: AppIcons.audio.speakerMute
            size: Metrics.symbolHuge
            color: root.theme.secondaryTextColor
        }
        StyledText {
            objectName: "noDevices"
            width: parent.width
            text: "没有找到播放设备"
            style: TextStyles.headline
            color: Surfaces.textOn(root.theme, Surfaces.background(root.theme), root.theme.primaryTextColor)
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        StyledText {
            objectName: "noDevicesHint"
            width: parent.width
            text: "接上耳机或音箱后会显示在这里"
            style: TextStyles.footnote
            color: Surfaces.textOn(root.theme, Surfaces.background(root.theme), root.theme.secondaryTextColor)
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}

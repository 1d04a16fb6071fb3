// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The way to the devices that the player can play on.
SheetRow {
    required property OutputDevicesViewModel devices

    symbol: AppIcons.audio.airplay
    symbolColor: SystemColors.blue
    text: "播放设备"
    detail: "选择 AirPlay 设备"
    onClicked: devices.open()
}

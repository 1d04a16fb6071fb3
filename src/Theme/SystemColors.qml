// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick

/// Colours by role, light or dark as the desktop's palette is.
QtObject {
    id: root

    property SystemPalette desktop: SystemPalette {}
    readonly property bool dark: desktop.window.hslLightness < 0.5

    readonly property color background: dark ? "#000000" : "#FFFFFF"
    readonly property color secondaryBackground: dark ? "#1C1C1E" : "#F2F2F7"
    readonly property color tertiaryBackground: dark ? "#2C2C2E" : "#FFFFFF"
    readonly property color label: dark ? "#FFFFFF" : "#000000"
    readonly property color secondaryLabel: dark ? "#99EBEBF5" : "#993C3C43"
    readonly property color tertiaryLabel: dark ? "#4DEBEBF5" : "#4D3C3C43"
    readonly property color separator: dark ? "#99545458" : "#4A3C3C43"
    readonly property color gray: "#8E8E93"
    readonly property color red: dark ? "#FF453A" : "#FF3B30"
    readonly property color green: dark ? "#30D158" : "#34C759"
    readonly property color blue: dark ? "#0A84FF" : "#007AFF"

    readonly property color accent: blue
    readonly property color accentInk: "#FFFFFF"
    /// Laid over whatever lies beneath.
    readonly property color hover: dark ? "#14FFFFFF" : "#0D000000"
    readonly property color pressed: dark ? "#29FFFFFF" : "#1A000000"
    readonly property color scrim: dark ? "#99000000" : "#66000000"
    readonly property color track: dark ? "#52787880" : "#33787880"
    readonly property color redTint: dark ? "#38FF453A" : "#1FFF3B30"
    readonly property color accentTint: dark ? "#380A84FF" : "#1F007AFF"
    /// What a cover shows until it is there; the same as its placeholder.
    readonly property color coverFill: "#2E8E8E93"
}

// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick
import Cadorel.Desktop

/// Colours by role and by name, light or dark as the desktop is.
QtObject {
    id: root

    readonly property bool dark: DesktopAppearance.dark
    readonly property systemColorTable table: dark ? ColorTables.dark : ColorTables.light

    readonly property color background: table.background
    readonly property color secondaryBackground: table.secondaryBackground
    readonly property color tertiaryBackground: table.tertiaryBackground
    readonly property color label: table.label
    readonly property color secondaryLabel: table.secondaryLabel
    readonly property color tertiaryLabel: table.tertiaryLabel
    readonly property color separator: table.separator
    readonly property color gray: table.gray
    readonly property color brown: table.brown
    readonly property color red: table.red
    readonly property color orange: table.orange
    readonly property color yellow: table.yellow
    readonly property color green: table.green
    readonly property color mint: table.mint
    readonly property color teal: table.teal
    readonly property color blue: table.blue
    readonly property color indigo: table.indigo
    readonly property color purple: table.purple
    readonly property color pink: table.pink

    readonly property color accent: table.accent
    /// The accent and the red as texts, and as grounds of a text of the colour accentInk: so that they can be read.
    readonly property color accentText: table.accentText
    readonly property color redText: table.redText
    readonly property color accentFill: table.accentFill
    readonly property color redFill: table.redFill
    readonly property color accentInk: table.accentInk
    /// Laid over whatever lies beneath.
    readonly property color hover: table.hover
    readonly property color pressed: table.pressed
    readonly property color scrim: table.scrim
    readonly property color track: table.track
    readonly property color redTint: table.redTint
    readonly property color accentTint: table.accentTint
    /// What a cover shows until it is there; the same as its placeholder.
    readonly property color coverFill: table.coverFill
    /// Of every look in both schemes: what of a song is played, the chosen one of a few on a light track, and what lies
    /// beneath the cover in the label of a cassette.
    readonly property color playedPart: "white"
    readonly property color segmentPill: "white"
    readonly property color labelPaper: "white"
}

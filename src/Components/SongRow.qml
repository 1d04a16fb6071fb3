// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// One song of a list, by the roles of the list's model.
ThemedSongRow {
    required property int index
    required property string songId
    required title
    required subtitle
    required property string durationText
    required property string platformText
    required coverSource
    required isCurrent
    required property bool isDeletable
    required isFavorite
    /// Room at each side, so that rows of a wide window stay readable.
    property int sideMargin: Metrics.screenMargin

    leftInset: sideMargin
    rightInset: sideMargin
    // An online song's length is not known: its platform stands there instead.
    trailingText: durationText !== "" ? durationText : platformText
}

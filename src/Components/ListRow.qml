// SPDX-License-Identifier: GPL-3.0-or-later
import Cadorel

/// A row with room at each side, so that rows of a wide window stay readable.
ThemedListRow {
    property int sideMargin: Metrics.screenMargin

    leftInset: sideMargin
    rightInset: sideMargin
}

// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick

/// The strip above the tab bar that the disc of the small player takes where it lies first. Pages of the tabs leave it
/// free at their end.
QtObject {
    /// 0 without a disc. The root screen tells.
    property real height: 0
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// Shows an item that is thrown away and made anew, with all of its state, when its identity changes.
Loader {
    id: root

    property var identity
    /// Whether the item is there at all.
    property bool isPresent: true
    property bool isChanging: false

    active: isPresent && !isChanging
    onIdentityChanged: {
        isChanging = true;
        isChanging = false;
    }
}

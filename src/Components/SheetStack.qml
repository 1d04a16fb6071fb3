// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick

/// The sheets that are open, one over the other. Only the highest is modal: this Qt hands the mouse's wheel to nothing
/// that lies over a second modal popup, and one veil is enough.
QtObject {
    id: root

    /// From the lowest to the highest.
    property var open: []

    function isCovered(sheet: QtObject): bool {
        const place = open.indexOf(sheet);
        return place >= 0 && place < open.length - 1;
    }
    function rise(sheet: QtObject): void {
        open = open.filter(other => other !== sheet).concat([sheet]);
    }
    function sink(sheet: QtObject): void {
        if (open.includes(sheet))
            open = open.filter(other => other !== sheet);
    }
}

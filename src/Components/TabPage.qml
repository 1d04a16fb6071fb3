// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// The room of one place of the window. What it shows is made at the first visit, so that the window's first frame
/// does not pay for it, and kept from then on.
Loader {
    required property bool isCurrent
    property bool isVisited: false

    active: isVisited
    visible: isCurrent
    enabled: isCurrent
    // A loader that has its item's keyboard passes it on.
    focus: isCurrent
    onIsCurrentChanged: if (isCurrent) isVisited = true
    Component.onCompleted: if (isCurrent) isVisited = true
}

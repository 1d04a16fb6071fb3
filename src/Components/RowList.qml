// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic

/// A list whose rows the keyboard walks over. What its keys ask for is up to the list that is made of it.
ListView {
    id: root

    /// The keyboard was used last: only then the row it stands on is outlined.
    property bool keyboardInUse: false
    property int rowStep: Metrics.rowHeight

    signal activated(int row)
    signal menuKeyPressed
    signal deleteKeyPressed

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    reuseItems: true
    currentIndex: -1
    highlightMoveDuration: 0
    keyNavigationEnabled: true
    bottomMargin: Metrics.rowSpacing
    Accessible.role: Accessible.List

    function goTo(row: int): void {
        if (count > 0)
            currentIndex = Math.max(0, Math.min(count - 1, row));
    }

    Keys.onPressed: event => {
        keyboardInUse = true;
        const page = Math.max(1, Math.floor(height / rowStep) - 1);
        switch (event.key) {
        case Qt.Key_Return:
        case Qt.Key_Enter:
            if (currentIndex >= 0)
                activated(currentIndex);
            break;
        case Qt.Key_Delete:
            if (currentItem)
                deleteKeyPressed();
            break;
        case Qt.Key_Menu:
            if (currentItem)
                menuKeyPressed();
            break;
        case Qt.Key_Home:
            goTo(0);
            break;
        case Qt.Key_End:
            goTo(count - 1);
            break;
        case Qt.Key_PageUp:
            goTo(currentIndex - page);
            break;
        case Qt.Key_PageDown:
            goTo(currentIndex + page);
            break;
        default:
            return;
        }
        event.accepted = true;
    }
    Keys.onUpPressed: {
        keyboardInUse = true;
        goTo(currentIndex - 1);
    }
    Keys.onDownPressed: {
        keyboardInUse = true;
        goTo(currentIndex + 1);
    }

    ScrollBar.vertical: SlimScrollBar {}
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic

/// A list whose rows the keyboard walks over. What its keys ask for is up to the list that is made of it.
ListView {
    id: root

    /// The keyboard was used last: only then the row it stands on is outlined.
    property bool keyboardInUse: false
    property int rowStep: Metrics.rowHeight + spacing
    /// The small player's disc may lie over the lower end: the last row can be scrolled clear of it.
    property bool isBeneathMiniPlayer: false
    /// Space plays and pauses, as elsewhere in the window, and does not press the row.
    property bool playsAndPauses: false
    /// For a ground that is not the look's own.
    property alias scrollBarInk: scrollBar.ink

    /// A row is pressed, by the mouse, a finger or Return.
    signal activated(int row)
    signal playPauseRequested
    signal menuKeyPressed
    signal deleteKeyPressed

    clip: true
    spacing: Metrics.rowSpacing
    // What a row's ground throws about itself is not cut off at the first one.
    topMargin: Metrics.grid
    boundsBehavior: Flickable.StopAtBounds
    reuseItems: true
    currentIndex: -1
    highlightMoveDuration: 0
    keyNavigationEnabled: true
    bottomMargin: Metrics.rowSpacing + (isBeneathMiniPlayer ? MiniPlayerRoom.height : 0)
    // See ListTabStop.
    activeFocusOnTab: activeFocus
    Accessible.role: Accessible.List

    /// Goes to a row with a spring, until it stands in the middle; -1 is none.
    function reveal(row: int): void {
        if (row < 0 || row >= count)
            return;
        const from = contentY;
        positionViewAtIndex(row, ListView.Center);
        const to = contentY;
        contentY = from;
        spring.row = row;
        spring.from = from;
        spring.to = to;
        spring.restart();
    }
    function activateByKey(event: var): void {
        keyboardInUse = true;
        if (currentIndex >= 0 && !event.isAutoRepeat)
            activated(currentIndex);
    }
    function takeSpace(event: var): void {
        event.accepted = true;
        if (!playsAndPauses)
            activateByKey(event);
        else if (Press.isPlayPause(event))
            playPauseRequested();
    }
    /// The mouse or a finger is on a row.
    function takePress(): void {
        keyboardInUse = false;
        forceActiveFocus(Qt.MouseFocusReason);
    }
    /// It has pressed the row.
    function take(row: int): void {
        currentIndex = row;
        activated(row);
    }
    /// The Tab key has come: to the row where the keyboard was, or to the first one in sight.
    function enter(): void {
        keyboardInUse = true;
        for (let y = 0; currentIndex < 0 && y < height; y += Metrics.grid)
            currentIndex = indexAt(width / 2, contentY + y);
        currentIndex = Math.max(0, currentIndex);
        positionViewAtIndex(currentIndex, ListView.Contain);
        currentItem.forceActiveFocus(Qt.TabFocusReason);
    }
    /// The keyboard comes from outside, from a field above the list for instance.
    function takeKeyboard(): void {
        if (count === 0)
            return;
        keyboardInUse = true;
        currentIndex = Math.max(0, currentIndex);
        forceActiveFocus(Qt.TabFocusReason);
    }
    function goTo(row: int): void {
        if (count === 0)
            return;
        currentIndex = Math.max(0, Math.min(count - 1, row));
        // With what is left free beneath the last row.
        if (currentIndex === count - 1) {
            positionViewAtEnd();
            contentY = Math.max(originY - topMargin, originY + contentHeight + bottomMargin - height);
        }
    }

    // Without rows the keys are the screen's.
    Keys.enabled: count > 0
    // Once, however long the key is held down.
    Keys.onReturnPressed: event => activateByKey(event)
    Keys.onEnterPressed: event => activateByKey(event)
    Keys.onPressed: event => {
        keyboardInUse = true;
        const page = Math.max(1, Math.floor(height / rowStep) - 1);
        switch (event.key) {
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

    onMovementStarted: spring.stop()

    ResponseSpring {
        id: spring

        property int row: -1

        objectName: "revealSpring"
        target: root
        property: "contentY"
        response: 0.35
        damping: 0.85
        // Rows that came or went on the way have moved it.
        onFinished: root.positionViewAtIndex(row, ListView.Center)
    }
    ScrollBar.vertical: SlimScrollBar {
        id: scrollBar
    }

    ListTabStop {
        list: root
        onEntered: root.enter()
    }
}

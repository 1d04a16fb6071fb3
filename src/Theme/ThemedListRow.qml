// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// What every row of a list is: a ground of the look, which the insets hold off the sides, and what a row owes to
/// mouse, finger, keyboard and screen reader. What it shows lies in `content`. Rows have no `text`: a name from outside
/// may hold an "&", and would make a shortcut of the letter behind it.
T.ItemDelegate {
    id: root

    default property alias content: body.data
    /// A long press and the right button ask for a menu.
    property bool hasMenu: true
    /// The list that it is a row of, if any: the keyboard is that list's.
    readonly property RowList list: ListView.view as RowList
    /// The keyboard stands on this row and is in use.
    property bool showsFocus: list !== null && ListView.isCurrentItem && list.activeFocus && list.keyboardInUse
    property AppTheme theme: ThemeEnvironment.theme

    signal menuRequested(point position)

    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    Accessible.onPressAction: Press.byAction(root)
    // A list gives its current row the keyboard. A row is a button, which Space presses as often as it is repeated, and
    // on some desktops Return, too.
    Keys.onReturnPressed: event => list ? list.activateByKey(event) : Press.byKey(root, event)
    Keys.onEnterPressed: event => list ? list.activateByKey(event) : Press.byKey(root, event)
    Keys.onPressed: event => {
        if (list && event.key === Qt.Key_Space)
            list.takeSpace(event);
        else
            Press.holdBack(event);
    }
    Keys.onReleased: event => Press.holdBack(event)
    onPressed: {
        if (list)
            list.takePress();
    }
    onPressAndHold: {
        if (hasMenu)
            menuRequested(Qt.point(pressX, pressY));
    }

    // A handler of the row's own would make the row take the right button for a click.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: root.hasMenu ? Qt.RightButton : Qt.NoButton
        onClicked: mouse => root.menuRequested(Qt.point(mouse.x, mouse.y))
    }
    background: ThemedRowModifier {
        theme: root.theme

        ThemedHighlight {
            anchors.fill: parent
            isHovered: root.hovered
            isPressed: root.down
            isFocused: root.showsFocus
            theme: root.theme
        }
    }
    Item {
        id: body

        anchors.fill: parent
        anchors.leftMargin: root.leftInset
        anchors.rightMargin: root.rightInset
    }
}

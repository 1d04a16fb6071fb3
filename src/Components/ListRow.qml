// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// What rows of lists have in common that are no songs: a ground of the look, which the insets hold off the sides,
/// and what every row owes to mouse, finger and screen reader. What it shows lies in `content`; the keyboard is its
/// list's. Rows have no `text`: a name from outside may hold an "&", and would make a shortcut of the letter behind it.
T.ItemDelegate {
    id: root

    default property alias content: body.data
    /// The keyboard stands on this row and is in use.
    property bool showsFocus: false
    /// A long press and the right button ask for a menu.
    property bool hasMenu: true
    property int sideMargin: Metrics.screenMargin
    property AppTheme theme: ThemeEnvironment.theme

    signal menuRequested(point position)

    leftInset: sideMargin
    rightInset: sideMargin
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    Accessible.onPressAction: Press.byAction(root)
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

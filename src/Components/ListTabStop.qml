// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

/// Where the Tab key comes to a list, which gets the keyboard at once. A list that were this stop itself could not tell the
/// Tab key from the mouse. It is one only while it has the keyboard, to be left by the Tab key.
T.Control {
    required property ItemView list

    signal entered

    // The stop itself could not be withdrawn while it has the keyboard.
    visible: list.count > 0 && !list.activeFocus
    activeFocusOnTab: true
    focusPolicy: Qt.NoFocus
    Accessible.ignored: true
    onActiveFocusChanged: if (activeFocus) entered()
}

// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick
import QtQuick.Templates as T

/// How a button is pressed without a mouse or a finger.
QtObject {
    /// By a screen reader, which may ask for it although the button is off.
    function byAction(button: T.AbstractButton): void {
        if (button.enabled)
            button.clicked();
    }

    /// By Return: once, however long the key is held down.
    function byKey(button: T.AbstractButton, event: var): void {
        if (!event.isAutoRepeat)
            button.clicked();
    }

    /// Keeps the repeats of a held Space from a button, which would click with each of them. For both handlers of keys.
    function holdBack(event: var): void {
        event.accepted = event.isAutoRepeat && event.key === Qt.Key_Space;
    }

    /// Whether no other key is held down with it. Those of the number pad carry a mark of their own.
    function isPlain(event: var): bool {
        return (event.modifiers & ~Qt.KeypadModifier) === Qt.NoModifier;
    }

    /// Whether Space means to play and pause: once, however long it is held down, and not together with another key,
    /// as input methods and desktops use it.
    function isPlayPause(event: var): bool {
        return isPlain(event) && !event.isAutoRepeat;
    }
}

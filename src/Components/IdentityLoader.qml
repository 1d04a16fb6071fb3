// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

/// Shows an item that is thrown away and made anew, with all of its state, when its identity changes. The keyboard comes
/// back to what it spoke to, where the new item has something of that name.
Loader {
    id: root

    property var identity
    /// Whether the item is there at all.
    property bool isPresent: true
    property bool isChanging: false

    function named(name: string, around: Item): Item {
        if (around.objectName === name)
            return around;
        for (let i = 0; i < around.children.length; ++i) {
            const found = named(name, around.children[i] as Item);
            if (found)
                return found;
        }
        return null;
    }
    function remake(): void {
        isChanging = true;
        isChanging = false;
    }

    active: isPresent && !isChanging
    onIdentityChanged: {
        const shown = item as Item;
        if (!shown?.activeFocus) {
            remake();
            return;
        }
        const holder = Window.activeFocusItem;
        const name = holder.objectName;
        const reason = (holder as T.Control)?.focusReason ?? Qt.OtherFocusReason;
        remake();
        const made = item as Item;
        const heir = name !== "" && made ? named(name, made) : null;
        (heir ?? made)?.forceActiveFocus(reason);
    }
}

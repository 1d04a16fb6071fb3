// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Cadorel

/// Rows and fields that scroll where there is no room for all of them. What the keyboard comes to scrolls into sight.
Flickable {
    id: root

    /// Where the keyboard is, anywhere in the window.
    readonly property Item keyboardItem: Window.activeFocusItem
    /// Where it was last in here.
    property Item lastHeld: null

    /// The keyboard has come to an item in here, which has been scrolled into sight.
    signal reached(item: Item)

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    // Opened again, it is come to anew.
    onVisibleChanged: lastHeld = null
    onKeyboardItemChanged: {
        if (!holds(keyboardItem)) {
            // Taken elsewhere on the same page or sheet, it comes back because the listener leads it.
            if (keyboardItem && layerOf(keyboardItem) === layerOf(root))
                lastHeld = null;
            return;
        }
        // Back from another window or from a menu it is where it was, and the listener may have scrolled on.
        if (keyboardItem === lastHeld)
            return;
        lastHeld = keyboardItem;
        reveal(keyboardItem);
        reached(keyboardItem);
    }

    /// Scrolls as little as brings the item into sight, with some room about it.
    function reveal(item: Item): void {
        const top = item.mapToItem(contentItem, 0, 0).y - Metrics.sectionGap;
        const bottom = top + item.height + 2 * Metrics.sectionGap;
        const wanted = Math.min(Math.max(contentY, bottom - height), top);
        contentY = Math.max(0, Math.min(wanted, contentHeight + bottomMargin - height));
    }
    function holds(item: Item): bool {
        for (let around = item; around; around = around.parent) {
            if (around === contentItem)
                return true;
        }
        return false;
    }
    /// The sheet or menu that the item belongs to, or the window's content.
    function layerOf(item: Item): Item {
        let layer = item;
        while (layer.parent && layer.parent.parent && layer.parent !== T.Overlay.overlay)
            layer = layer.parent;
        return layer;
    }

    ScrollBar.vertical: SlimScrollBar {}
}

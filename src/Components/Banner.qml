// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// Something to say, with one button. One that goes while the keyboard is on that button passes it on: an invisible button
/// would go on taking Space.
ThemedCard {
    id: root

    property string text
    property Item button
    /// Who gets the keyboard then; without one, or while it cannot be reached, what stands before the banner.
    property Item keyboardHeir

    Accessible.role: Accessible.AlertMessage
    Accessible.name: text
    onVisibleChanged: {
        // Not with all that is around it.
        if (visible || !parent?.visible || !button?.activeFocus)
            return;
        const isReachable = keyboardHeir && keyboardHeir.visible && keyboardHeir.enabled;
        (isReachable ? keyboardHeir : button.nextItemInFocusChain(false)).forceActiveFocus(Qt.OtherFocusReason);
        // Nor does a button get it there that had it once: Space plays and pauses again.
        const held = Window.activeFocusItem as T.AbstractButton;
        if (held)
            held.focus = false;
    }
}

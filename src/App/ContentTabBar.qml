// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What the bars of tabs have in common: the arrow keys walk from one tab to the next.
FocusScope {
    id: root

    required property ContentTabModel tabs
    required property int selectedTab
    /// The look has this bar. One that is not in use has no buttons.
    property bool isInUse: true
    /// The buttons, one for each of the tabs.
    property Repeater buttons

    /// The listener wants to be there, also where he is already. @param byKeyboard the keyboard stays in the bar
    signal tabRequested(int tab, bool byKeyboard)

    visible: isInUse
    Accessible.role: Accessible.PageTabList
    Accessible.name: "位置"

    function walkTo(row: int): void {
        const tab = tabs.tabAt(row);
        if (tab < 0)
            return;
        tabRequested(tab, true);
        (buttons.itemAt(row) as Item).forceActiveFocus(Qt.TabFocusReason);
    }

    Keys.onLeftPressed: walkTo(tabs.rowOf(selectedTab) - 1)
    Keys.onRightPressed: walkTo(tabs.rowOf(selectedTab) + 1)
}

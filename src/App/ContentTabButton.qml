// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// What the tabs of both bars have in common; how one looks is up to the bar.
T.TabButton {
    id: root

    required property int tab
    required property string name
    required property string title
    required property string symbol
    required property string selectedSymbol
    required property string kawaiiIcon
    property bool isSelected: false
    property AppTheme theme: ThemeEnvironment.theme

    objectName: name + "Tab"
    text: title
    // A click leaves the keyboard to the place that comes up. Which place that is the window says, not the button.
    focusPolicy: Qt.TabFocus
    checkable: false
    autoExclusive: false
    hoverEnabled: true
    Accessible.role: Accessible.PageTab
    Accessible.name: title
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.onPressAction: Press.byAction(root)
    Keys.onReturnPressed: event => Press.byKey(root, event)
    Keys.onEnterPressed: event => Press.byKey(root, event)
}

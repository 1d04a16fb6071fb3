// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// A row on a card that is one of several to choose; the chosen one bears a check mark.
// A screen reader learns what a button is from its type alone.
T.RadioButton {
    id: root

    /// What it shows. It may be a name from outside: as the button's `text`, an "&" in it would make a shortcut of the
    /// letter behind.
    property string label: text
    property string symbol
    property string detail
    property bool isSelected: false
    property AppTheme theme: ThemeEnvironment.theme

    width: parent?.width ?? implicitWidth
    implicitWidth: Metrics.menuWidth
    implicitHeight: content.implicitHeight
    checkable: false
    autoExclusive: false
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.name: detail === "" ? label : label + "，" + detail
    Accessible.checkable: true
    Accessible.checked: isSelected
    Accessible.onPressAction: Press.byAction(root)
    Keys.onReturnPressed: event => Press.byKey(root, event)
    Keys.onEnterPressed: event => Press.byKey(root, event)
    Keys.onUpPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
    Keys.onDownPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)

    background: ThemedHighlight {
        radius: Metrics.coverRadius
        isHovered: root.hovered
        isPressed: root.down
        isFocused: root.visualFocus
        theme: root.theme
    }
    contentItem: SheetRowContent { // qmllint disable deferred-property-id
        id: content

        symbol: root.symbol
        title: root.label
        detail: root.detail
        mark: root.isSelected ? AppIcons.status.checkmark : ""
        theme: root.theme
    }
}

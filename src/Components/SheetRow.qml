// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// A row on a card that leads somewhere.
T.AbstractButton {
    id: root

    property string symbol
    property color symbolColor: "transparent"
    property string detail
    property string mark: AppIcons.navigation.forward
    property color markColor: quietMark
    readonly property color quietMark: Qt.alpha(theme.secondaryTextColor, Metrics.quietMarkOpacity * theme.secondaryTextColor.a)
    property AppTheme theme: ThemeEnvironment.theme

    width: parent?.width ?? implicitWidth
    implicitWidth: Metrics.menuWidth
    implicitHeight: content.implicitHeight
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    opacity: enabled ? 1 : Metrics.disabledOpacity
    Accessible.name: detail === "" ? text : text + "，" + detail
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
        symbolColor: root.symbolColor
        title: root.text
        detail: root.detail
        mark: root.mark
        markColor: root.markColor
        theme: root.theme
    }
}

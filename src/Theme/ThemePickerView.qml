// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// A card to choose the look on. The arrow keys walk over the looks, Space and Return choose.
FocusScope {
    id: root

    property AppTheme theme: ThemeEnvironment.theme

    implicitWidth: 3 * Metrics.previewWidth + 2 * Metrics.rowSpacing + 2 * Metrics.screenMargin
    implicitHeight: content.implicitHeight + 2 * Metrics.screenMargin

    function walkTo(index: int): void {
        const card = cards.itemAt(index);
        if (card)
            card.forceActiveFocus(Qt.TabFocusReason);
    }

    ThemedCard {
        anchors.fill: parent
        theme: root.theme
    }
    Column {
        id: content

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Metrics.screenMargin
        spacing: Metrics.cardPadding

        StyledText {
            objectName: "heading"
            width: parent.width
            text: "界面主题"
            style: TextStyles.headline
            color: Surfaces.textOn(root.theme, Surfaces.themedCard(root.theme), root.theme.primaryTextColor)
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Row {
            id: picker

            objectName: "themePicker"
            width: parent.width
            spacing: Metrics.rowSpacing
            Accessible.role: Accessible.Grouping
            Accessible.name: "主题"

            Repeater {
                id: cards

                // By number: another scheme of the desktop brings other objects, and cards made anew would lose the
                // keyboard. Lists of objects have no name in the descriptions of types.
                // qmllint disable type
                model: ThemeManager.themes.length
                // qmllint enable type

                delegate: ThemePreviewCard {
                    required property int index

                    objectName: "themeCard" + index
                    width: Math.floor((picker.width - (cards.count - 1) * picker.spacing) / cards.count)
                    // qmllint disable type
                    theme: ThemeManager.themes[index] as AppTheme
                    // qmllint enable type
                    isSelected: index === ThemeManager.currentThemeIndex
                    // One stop of the Tab key, as radio buttons are: where the keyboard is, else the current look.
                    focus: isSelected
                    focusPolicy: (root.activeFocus ? activeFocus : isSelected) ? Qt.TabFocus : Qt.NoFocus
                    Keys.onLeftPressed: root.walkTo(index - 1)
                    Keys.onRightPressed: root.walkTo(index + 1)
                    onClicked: ThemeManager.currentThemeIndex = index
                }
            }
        }
    }
}

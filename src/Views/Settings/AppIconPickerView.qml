// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// The screen on which the application's icon is chosen. The arrow keys walk over the icons, Space and Return choose.
SettingsForm {
    id: root

    property AppTheme theme: ThemeEnvironment.theme
    readonly property int columns: 2

    title: "应用图标"
    backText: "返回"

    function walkTo(index: int): void {
        const button = buttons.itemAt(index);
        if (button)
            button.forceActiveFocus(Qt.TabFocusReason);
    }

    FocusScope {
        id: choices

        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, Metrics.sheetWidth - 2 * Metrics.screenMargin)
        height: grid.height
        focus: true

        Grid {
            id: grid

            objectName: "iconGrid"
            width: parent.width
            columns: root.columns
            spacing: Metrics.screenMargin
            Accessible.role: Accessible.Grouping
            Accessible.name: "应用图标"

            Repeater {
                id: buttons

                model: AppIconService.count

                delegate: AppIconButton {
                    required property int index
                    readonly property appIcon choice: AppIconService.iconAt(index)
                    readonly property bool isFirstStop: index === Math.max(0, AppIconService.currentIndex)

                    objectName: "iconButton" + index
                    width: Math.floor((grid.width - grid.spacing) / root.columns)
                    iconName: choice.iconName
                    displayName: choice.displayName
                    imageName: choice.imageName
                    isSelected: index === AppIconService.currentIndex
                    theme: root.theme
                    // One stop of the Tab key, as radio buttons are: where the keyboard is, else the choice.
                    focus: isFirstStop
                    focusPolicy: (choices.activeFocus ? activeFocus : isFirstStop) ? Qt.TabFocus : Qt.NoFocus
                    Keys.onLeftPressed: root.walkTo(index - 1)
                    Keys.onRightPressed: root.walkTo(index + 1)
                    Keys.onUpPressed: root.walkTo(index - root.columns)
                    Keys.onDownPressed: root.walkTo(index + root.columns)
                    onClicked: AppIconService.choose(iconName)
                }
            }
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// The screen on which the application's icon is chosen. The arrow keys walk over the icons, Space and Return choose.
FocusScope {
    id: root

    property AppTheme theme: ThemeEnvironment.theme
    readonly property int columns: 2

    signal closeRequested

    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Escape || event.key === Qt.Key_Back || event.matches(StandardKey.Back);
        if (event.accepted)
            closeRequested();
    }

    function walkTo(index: int): void {
        const button = buttons.itemAt(index);
        if (button)
            button.forceActiveFocus(Qt.TabFocusReason);
    }

    ThemedBackground {
        anchors.fill: parent
        theme: root.theme
    }
    Flickable {
        anchors.fill: parent
        contentHeight: content.y + content.height + Metrics.screenMargin
        boundsBehavior: Flickable.StopAtBounds

        Column {
            id: content

            x: Math.max(Metrics.screenMargin, (parent.width - Metrics.sheetWidth) / 2)
            width: parent.width - 2 * x
            spacing: Metrics.rowSpacing

            Item {
                width: parent.width
                height: title.height + 2 * Metrics.screenMargin

                ThemedIconButton {
                    id: backButton

                    objectName: "backButton"
                    anchors.left: parent.left
                    anchors.leftMargin: -(width - Metrics.symbol) / 2
                    anchors.verticalCenter: title.verticalCenter
                    symbol: AppIcons.navigation.back
                    color: root.theme.primaryColor
                    text: "返回"
                    theme: root.theme
                    onClicked: root.closeRequested()
                }
                StyledText {
                    id: title

                    objectName: "pageTitle"
                    anchors.left: backButton.right
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    text: "应用图标"
                    style: TextStyles.title2
                    font.weight: Font.Bold
                    color: Surfaces.textOn(root.theme, Surfaces.background(root.theme), root.theme.primaryTextColor)
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
            }
            FocusScope {
                id: choices

                width: parent.width
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
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Cadorel

/// A setting with a few choices, which a menu offers.
T.AbstractButton {
    id: root

    /// AppearanceChoice records, a list of them.
    required property var options
    /// `value` of the one that stands.
    required property int current
    property AppTheme theme: ThemeEnvironment.theme
    readonly property var currentOption: {
        for (let i = 0; i < options.length; ++i) {
            if (options[i].value === current)
                return options[i];
        }
        return null;
    }

    signal chosen(int value)

    width: parent?.width ?? implicitWidth
    implicitWidth: Metrics.menuWidth
    implicitHeight: Math.max(Metrics.settingsItemHeight, label.implicitHeight + 2 * Metrics.cardPadding)
    leftPadding: Metrics.cardPadding
    rightPadding: Metrics.cardPadding
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.role: Accessible.ComboBox
    Accessible.name: text + "，" + (currentOption?.displayName ?? "")
    Accessible.onPressAction: Press.byAction(root)
    Keys.onReturnPressed: event => Press.byKey(root, event)
    Keys.onEnterPressed: event => Press.byKey(root, event)
    onClicked: menu.open()

    background: ThemedHighlight {
        radius: Metrics.coverRadius
        isHovered: root.hovered
        isPressed: root.down
        isFocused: root.visualFocus
        theme: root.theme
    }
    contentItem: Item { // qmllint disable deferred-property-id
        SettingRowLabel {
            id: label

            anchors.left: parent.left
            anchors.right: chevron.left
            anchors.rightMargin: Metrics.rowSpacing
            anchors.verticalCenter: parent.verticalCenter
            title: root.text
            valueText: root.currentOption?.displayName ?? ""
            theme: root.theme
        }
        SymbolIcon {
            id: chevron

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            name: AppIcons.navigation.down
            size: Metrics.symbolTiny
            color: root.theme.secondaryTextColor
        }
    }

    ThemedMenu {
        id: menu

        objectName: root.objectName + "Menu"
        x: root.width - width
        y: root.height
        theme: root.theme

        Repeater {
            model: root.options

            delegate: ThemedMenuItem {
                required property var modelData

                objectName: root.objectName + modelData.rawValue
                theme: root.theme
                symbol: modelData.value === root.current ? AppIcons.status.checkmark : modelData.icon
                text: modelData.displayName
                Accessible.checkable: true
                Accessible.checked: modelData.value === root.current
                onTriggered: root.chosen(modelData.value)
            }
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// One chart: its name, and how often it changes.
T.ItemDelegate {
    id: root

    required property string name
    required property string updateFrequency
    property bool showsFocus: false
    property AppTheme theme: ThemeEnvironment.theme

    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    Accessible.role: Accessible.ListItem
    Accessible.name: name + "，" + updateFrequency
    Accessible.onPressAction: Press.byAction(root)

    background: ThemedCard {
        theme: root.theme

        ThemedHighlight {
            anchors.fill: parent
            isHovered: root.hovered
            isPressed: root.down
            isFocused: root.showsFocus
            theme: root.theme
        }
    }

    SymbolIcon {
        anchors.left: parent.left
        anchors.top: parent.top
        anchors.margins: Metrics.cardPadding
        name: AppIcons.music.chart
        color: root.theme.primaryColor
    }
    Column {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: Metrics.cardPadding

        StyledText {
            width: parent.width
            text: root.name
            style: TextStyles.headline
            wrapMode: Text.Wrap
            maximumLineCount: 2
        }
        QuietText {
            width: parent.width
            text: root.updateFrequency
        }
    }
}

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

    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    text: name
    Accessible.role: Accessible.ListItem
    Accessible.name: name + "，" + updateFrequency
    Accessible.onPressAction: root.clicked()

    background: Rectangle {
        radius: Metrics.cardRadius
        color: SystemColors.secondaryBackground

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: root.down ? SystemColors.pressed : root.hovered ? SystemColors.hover : "transparent"
        }
        FocusRing {
            radius: parent.radius
            visible: root.showsFocus
        }
    }

    SymbolIcon {
        anchors.left: parent.left
        anchors.top: parent.top
        anchors.margins: Metrics.cardPadding
        name: AppIcons.music.chart
        color: SystemColors.accent
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
        StyledText {
            width: parent.width
            text: root.updateFrequency
            style: TextStyles.footnote
            color: SystemColors.secondaryLabel
        }
    }
}

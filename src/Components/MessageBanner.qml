// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Cadorel

/// Something went wrong, said where the eye is until the listener closes it.
Banner {
    id: root

    signal dismissed

    visible: text !== ""
    button: dismissButton
    implicitHeight: row.implicitHeight

    Rectangle {
        objectName: "edge"
        anchors.fill: parent
        radius: root.cornerRadius
        color: "transparent"
        border.width: Metrics.hairline
        border.color: SystemColors.red
    }
    RowLayout {
        id: row

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Metrics.cardPadding
        spacing: Metrics.cardPadding

        SymbolIcon {
            Layout.alignment: Qt.AlignVCenter
            name: AppIcons.status.warning
            size: Metrics.symbolSmall
            color: SystemColors.red
        }
        StyledText {
            objectName: "messageText"
            Layout.fillWidth: true
            Layout.topMargin: Metrics.cardPadding
            Layout.bottomMargin: Metrics.cardPadding
            text: root.text
            style: TextStyles.subheadline
            wrapMode: Text.Wrap
            maximumLineCount: 4
        }
        ThemedIconButton {
            id: dismissButton

            objectName: "dismissButton"
            Layout.alignment: Qt.AlignVCenter
            symbol: AppIcons.navigation.close
            symbolSize: Metrics.symbolSmall
            text: "关闭提示"
            onClicked: root.dismissed()
        }
    }
}

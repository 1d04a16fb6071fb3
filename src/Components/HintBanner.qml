// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Cadorel

/// Something worth doing, with the button that does it.
ThemedCard {
    id: root

    property string text
    property string actionText

    signal actionRequested

    implicitHeight: row.implicitHeight
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    RowLayout {
        id: row

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Metrics.cardPadding
        spacing: Metrics.cardPadding

        SymbolIcon {
            name: AppIcons.status.info
            size: Metrics.symbolSmall
            color: root.theme.primaryColor
        }
        StyledText {
            objectName: "hintText"
            Layout.fillWidth: true
            Layout.topMargin: Metrics.cardPadding
            Layout.bottomMargin: Metrics.cardPadding
            text: root.text
            style: TextStyles.subheadline
            wrapMode: Text.Wrap
            maximumLineCount: 4
        }
        TextButton {
            objectName: "hintAction"
            role: TextButton.Plain
            text: root.actionText
            onClicked: root.actionRequested()
        }
    }
}

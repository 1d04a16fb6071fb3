// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Cadorel

/// Something worth doing, with the button that does it.
Banner {
    id: root

    property string actionText

    signal actionRequested

    button: actionButton
    implicitHeight: row.implicitHeight

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
            id: actionButton

            objectName: "hintAction"
            role: TextButton.Plain
            text: root.actionText
            onClicked: root.actionRequested()
        }
    }
}

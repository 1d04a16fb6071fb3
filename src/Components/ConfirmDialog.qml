// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import QtQuick.Templates as T
import Cadorel

/// Asks before something that cannot be undone, or says what has to be known. Escape and a click beside it cancel.
Dialog {
    id: root

    property string message
    property string acceptText
    property int acceptRole: TextButton.Destructive
    /// Without it, there is nothing to choose.
    property bool hasCancel: true
    property AppTheme theme: ThemeEnvironment.theme

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: parent ? Math.min(parent.width - 2 * Metrics.screenMargin, Metrics.dialogWidth) : Metrics.dialogWidth
    modal: true
    focus: true
    padding: Metrics.screenMargin
    onOpened: (hasCancel ? cancelButton : acceptButton).forceActiveFocus(Qt.PopupFocusReason)

    T.Overlay.modal: Rectangle {
        color: SystemColors.scrim
    }
    background: SurfaceImage {
        objectName: "dialogGround"
        surface: Surfaces.popup(root.theme, Metrics.sheetRadius)
    }
    header: null
    footer: null
    ColumnLayout {
        anchors.fill: parent
        spacing: Metrics.rowSpacing

        Accessible.role: Accessible.Dialog
        Accessible.name: root.title

        StyledText {
            Layout.fillWidth: true
            text: root.title
            style: TextStyles.headline
            horizontalAlignment: Text.AlignHCenter
        }
        QuietText {
            objectName: "dialogMessage"
            Layout.fillWidth: true
            text: root.message
            style: TextStyles.subheadline
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            maximumLineCount: 6
        }
        RowLayout {
            Layout.topMargin: Metrics.rowSpacing
            spacing: Metrics.cardPadding

            TextButton {
                id: cancelButton

                objectName: "cancelButton"
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                visible: root.hasCancel
                text: "取消"
                onClicked: root.reject()
            }
            TextButton {
                id: acceptButton

                objectName: "acceptButton"
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                role: root.acceptRole
                text: root.acceptText
                onClicked: root.accept()
            }
        }
    }
}

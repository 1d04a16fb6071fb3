// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import QtQuick.Templates as T

/// A sheet that rises from the lower edge, with a title, a way out and, if wanted, a way on. What it holds is
/// laid out beneath the title.
Popup {
    id: root

    property string title
    property string cancelName: "sheetCancel"
    property string cancelText: "取消"
    property string acceptName: "sheetAccept"
    /// Text of the button that accepts; empty when the sheet has none in its title bar.
    property string acceptText
    property bool canAccept: true
    /// The sheet is as high as what it holds, not as the window.
    property bool hugsContent: false
    readonly property int room: parent ? Math.min(parent.height - Metrics.touchTarget, Metrics.phoneHeight) : Metrics.phoneHeight
    default property alias body: column.data

    signal accepted

    parent: T.Overlay.overlay
    width: parent ? Math.min(parent.width, Metrics.sheetWidth) : Metrics.sheetWidth
    height: hugsContent ? Math.min(room, column.implicitHeight) : room
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? parent.height - height : 0
    padding: 0
    modal: true
    focus: true

    T.Overlay.modal: Rectangle {
        color: SystemColors.scrim
    }
    enter: Transition {
        NumberAnimation {
            property: "y"
            from: root.parent ? root.parent.height : 0
            duration: Metrics.sheetDuration
            easing.type: Easing.OutCubic
        }
    }
    background: Rectangle {
        color: SystemColors.secondaryBackground
        radius: Metrics.sheetRadius

        // The lower corners lie on the window's edge and stay square.
        Rectangle {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            height: parent.radius
            color: parent.color
        }
    }

    ColumnLayout {
        id: column

        anchors.fill: parent
        spacing: 0

        Accessible.role: Accessible.Dialog
        Accessible.name: root.title

        Item {
            Layout.fillWidth: true
            Layout.preferredHeight: Metrics.touchTarget + Metrics.rowSpacing

            TextButton {
                objectName: root.cancelName
                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
                role: TextButton.Plain
                text: root.cancelText
                onClicked: root.close()
            }
            StyledText {
                anchors.centerIn: parent
                text: root.title
                style: TextStyles.headline
            }
            TextButton {
                objectName: root.acceptName
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                visible: root.acceptText !== ""
                role: TextButton.Plain
                text: root.acceptText
                enabled: root.canAccept
                onClicked: root.accepted()
            }
        }
    }
}

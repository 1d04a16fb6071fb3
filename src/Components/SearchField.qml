// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Cadorel

/// A field for what to look for. Return submits it, Escape and the button at its end empty it, the arrow down
/// leaves it for what was found.
FocusScope {
    id: root

    property string text
    property string placeholder

    signal edited(string text)
    signal submitted
    signal leftDownwards

    implicitHeight: Metrics.touchTarget

    Rectangle {
        anchors.fill: parent
        radius: Metrics.controlRadius
        color: SystemColors.secondaryBackground

        FocusRing {
            radius: parent.radius
            visible: field.activeFocus
        }
    }
    SymbolIcon {
        id: lens

        anchors.left: parent.left
        anchors.leftMargin: Metrics.cardPadding
        anchors.verticalCenter: parent.verticalCenter
        name: AppIcons.action.search
        size: Metrics.symbolSmall
        color: SystemColors.secondaryLabel
    }
    TextField {
        id: field

        objectName: root.objectName + "Text"
        anchors.left: lens.right
        anchors.right: clearButton.left
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        leftPadding: Metrics.rowSpacing
        rightPadding: Metrics.grid
        background: null
        focus: true
        text: root.text
        color: SystemColors.label
        font.pixelSize: TextStyles.body.size
        placeholderText: root.placeholder
        placeholderTextColor: SystemColors.secondaryLabel
        selectionColor: SystemColors.accentFill
        selectedTextColor: SystemColors.accentInk
        selectByMouse: true
        inputMethodHints: Qt.ImhNoAutoUppercase
        Accessible.role: Accessible.EditableText
        Accessible.name: root.placeholder
        Accessible.searchEdit: true
        onTextEdited: root.edited(text)
        onAccepted: root.submitted()
        Keys.onDownPressed: root.leftDownwards()
        Keys.onEscapePressed: event => {
            event.accepted = text !== "";
            if (event.accepted)
                root.edited("");
        }
    }
    IconButton {
        id: clearButton

        objectName: root.objectName + "Clear"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: visible ? implicitWidth : Metrics.rowSpacing
        visible: root.text !== ""
        symbol: AppIcons.status.xmarkCircle
        symbolSize: Metrics.symbolSmall
        color: SystemColors.secondaryLabel
        text: "清空输入"
        onClicked: {
            root.edited("");
            field.forceActiveFocus(Qt.OtherFocusReason);
        }
    }
}

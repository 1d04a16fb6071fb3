// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// One server of the list: what it is called, where it is, and how its songs stand.
T.ItemDelegate {
    id: root

    required property int index
    required property string serverId
    required property string name
    required property string host
    required property string symbol
    required property string status
    required property bool hasFailed
    required property bool isEnabled
    required property bool isScanning
    required property real progress
    required property bool isNavidrome
    property bool showsFocus: false
    property int sideMargin: Metrics.screenMargin

    signal menuRequested(point position)

    implicitHeight: Metrics.tallRowHeight
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    text: name
    Accessible.name: name + "，" + host + "，" + status
    Accessible.onPressAction: root.clicked()
    onPressAndHold: menuRequested(Qt.point(pressX, pressY))

    TapHandler {
        // A finger has no buttons: every touch would count.
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad | PointerDevice.Stylus
        acceptedButtons: Qt.RightButton
        onTapped: eventPoint => root.menuRequested(eventPoint.position)
    }

    background: Item {
        Rectangle {
            anchors.fill: parent
            anchors.leftMargin: root.sideMargin - Metrics.rowSpacing
            anchors.rightMargin: root.sideMargin - Metrics.rowSpacing
            radius: Metrics.cardRadius
            color: root.down ? SystemColors.pressed : root.hovered ? SystemColors.hover : "transparent"

            FocusRing {
                radius: parent.radius
                visible: root.showsFocus
            }
        }
    }

    Item {
        anchors.fill: parent

        Rectangle {
            id: tile

            anchors.left: parent.left
            anchors.leftMargin: root.sideMargin
            anchors.verticalCenter: parent.verticalCenter
            width: Metrics.rowCover
            height: Metrics.rowCover
            radius: Metrics.coverRadius
            color: SystemColors.accentTint
            opacity: root.isEnabled ? 1 : Metrics.disabledOpacity

            SymbolIcon {
                anchors.centerIn: parent
                name: root.symbol
                color: SystemColors.accent
            }
        }
        Column {
            anchors.left: tile.right
            anchors.leftMargin: Metrics.cardPadding
            anchors.right: more.left
            anchors.rightMargin: Metrics.rowSpacing
            anchors.verticalCenter: parent.verticalCenter

            StyledText {
                objectName: "serverName"
                width: parent.width
                text: root.name
                color: root.isEnabled ? SystemColors.label : SystemColors.secondaryLabel
            }
            StyledText {
                objectName: "serverHost"
                width: parent.width
                text: root.host
                style: TextStyles.footnote
                color: SystemColors.secondaryLabel
                elide: Text.ElideMiddle
            }
            StyledText {
                objectName: "serverStatus"
                width: parent.width
                text: root.status
                style: TextStyles.footnote
                color: root.hasFailed ? SystemColors.redText : SystemColors.secondaryLabel
            }
        }
        ProgressTrack {
            objectName: "serverProgress"
            anchors.left: tile.right
            anchors.leftMargin: Metrics.cardPadding
            anchors.right: more.left
            anchors.rightMargin: Metrics.rowSpacing
            anchors.bottom: parent.bottom
            visible: root.isScanning
            progress: root.progress
        }
        IconButton {
            id: more

            objectName: "serverMore"
            anchors.right: parent.right
            anchors.rightMargin: root.sideMargin - (width - Metrics.symbol) / 2
            anchors.verticalCenter: parent.verticalCenter
            // The keyboard has the menu key for it.
            focusPolicy: Qt.NoFocus
            symbol: AppIcons.navigation.more
            color: SystemColors.secondaryLabel
            text: "“" + root.name + "”的更多操作"
            onClicked: root.menuRequested(Qt.point(x, y + height / 2))
        }
    }
}

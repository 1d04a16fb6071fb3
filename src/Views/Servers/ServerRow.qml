// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// One server of the list: what it is called, where it is, and how its songs stand.
ListRow {
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

    readonly property color quietColor: Surfaces.ink(theme, theme.secondaryTextColor)

    implicitHeight: Metrics.tallRowHeight
    Accessible.name: name + "，" + host + "，" + status

    SurfaceImage {
        id: tile

        objectName: "tile"
        anchors.left: parent.left
        anchors.leftMargin: Metrics.cardPadding
        anchors.verticalCenter: parent.verticalCenter
        width: Metrics.rowCover
        height: Metrics.rowCover
        surface: Surfaces.controlButton(root.theme, Metrics.rowCover)
        opacity: root.isEnabled ? 1 : Metrics.disabledOpacity

        SymbolIcon {
            anchors.centerIn: parent
            name: root.symbol
            color: root.theme.primaryColor
        }
    }
    Column {
        anchors.left: tile.right
        anchors.leftMargin: Metrics.cardPadding
        anchors.right: more.left
        anchors.rightMargin: Metrics.grid
        anchors.verticalCenter: parent.verticalCenter

        StyledText {
            objectName: "serverName"
            width: parent.width
            text: root.name
            color: root.isEnabled ? Surfaces.ink(root.theme, root.theme.primaryTextColor) : root.quietColor
        }
        StyledText {
            objectName: "serverHost"
            width: parent.width
            text: root.host
            style: TextStyles.footnote
            color: root.quietColor
            elide: Text.ElideMiddle
        }
        StyledText {
            objectName: "serverStatus"
            width: parent.width
            text: root.status
            style: TextStyles.footnote
            // A count and a time are never cut off.
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Metrics.smallLabel
            color: root.hasFailed ? Surfaces.ink(root.theme, SystemColors.red) : root.quietColor
        }
    }
    ProgressTrack {
        objectName: "serverProgress"
        anchors.left: tile.right
        anchors.leftMargin: Metrics.cardPadding
        anchors.right: more.left
        anchors.rightMargin: Metrics.rowSpacing
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Metrics.focusRing
        visible: root.isScanning
        progress: root.progress
        theme: root.theme
    }
    ThemedIconButton {
        id: more

        objectName: "serverMore"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        // The keyboard has the menu key for it.
        focusPolicy: Qt.NoFocus
        symbol: AppIcons.navigation.more
        theme: root.theme
        text: "更多操作"
        Accessible.name: "“" + root.name + "”的更多操作"
        onClicked: root.menuRequested(more.mapToItem(root, 0, more.height / 2))
    }
}

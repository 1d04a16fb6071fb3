// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A folder or a file of the picker.
ListRow {
    id: root

    required property int index
    required property string name
    required property bool isFolder
    required property bool isSelected
    property bool folderMode: false
    property string fileSymbol: AppIcons.file.music

    /// A file cannot be chosen while a folder is wanted; it shows what the folder holds.
    readonly property bool isChoosable: isFolder || !folderMode

    implicitHeight: Metrics.compactRowHeight
    hasMenu: false
    checked: isSelected
    enabled: isChoosable
    Accessible.name: (isFolder ? "文件夹 " : "") + name
    Accessible.checkable: !isFolder && !folderMode
    Accessible.checked: isSelected

    Item {
        anchors.fill: parent
        opacity: root.isChoosable ? 1 : Metrics.disabledOpacity

        SymbolIcon {
            id: icon

            anchors.left: parent.left
            anchors.leftMargin: Metrics.cardPadding
            anchors.verticalCenter: parent.verticalCenter
            name: root.isFolder ? AppIcons.file.folder : root.fileSymbol
            color: root.isFolder ? root.theme.primaryColor : root.theme.secondaryTextColor
        }
        StyledText {
            anchors.left: icon.right
            anchors.leftMargin: Metrics.cardPadding
            anchors.right: mark.left
            anchors.rightMargin: Metrics.cardPadding
            anchors.verticalCenter: parent.verticalCenter
            text: root.name
            style: TextStyles.callout
            elide: Text.ElideMiddle
        }
        SymbolIcon {
            id: mark

            anchors.right: parent.right
            anchors.rightMargin: Metrics.cardPadding
            anchors.verticalCenter: parent.verticalCenter
            name: root.isFolder ? AppIcons.navigation.forward : root.isSelected ? AppIcons.status.checkmarkCircle : AppIcons.appearance.circle
            size: root.isFolder ? Metrics.symbolTiny : Metrics.symbol
            color: root.isSelected ? root.theme.primaryColor : root.theme.secondaryTextColor
            visible: root.isFolder || !root.folderMode
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Cadorel

/// What stands in place of a list without rows; `actions` are buttons beneath the text.
Item {
    id: root

    property string title: "没有内容"
    property string systemImage: AppIcons.music.note
    property string description: "这里还没有任何内容"
    /// For a ground that is no screen of the desktop's colours.
    property color titleColor: SystemColors.label
    property color descriptionColor: SystemColors.secondaryLabel
    property color symbolColor: SystemColors.gray
    default property alias actions: buttons.data

    implicitHeight: column.implicitHeight + 2 * Metrics.sectionGap

    ColumnLayout {
        id: column

        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Metrics.screenMargin, Metrics.textBlockWidth)
        spacing: Metrics.rowSpacing

        SymbolIcon {
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: Metrics.rowSpacing
            name: root.systemImage
            size: Metrics.symbolHuge
            color: root.symbolColor
        }
        StyledText {
            Layout.fillWidth: true
            text: root.title
            style: TextStyles.title2
            color: root.titleColor
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }
        StyledText {
            Layout.fillWidth: true
            text: root.description
            style: TextStyles.subheadline
            color: root.descriptionColor
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            // What a server says can be long, and the buttons beneath must stay in sight.
            maximumLineCount: 5
        }
        ColumnLayout {
            id: buttons

            Layout.topMargin: Metrics.screenMargin
            Layout.alignment: Qt.AlignHCenter
            spacing: Metrics.cardPadding
        }
    }
}

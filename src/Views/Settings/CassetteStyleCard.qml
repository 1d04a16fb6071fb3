// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A cassette to choose.
ThemedChoiceCard {
    id: root

    /// An AppearanceChoice.
    required property var style

    signal selected

    padding: Metrics.rowSpacing
    text: style.displayName
    onClicked: selected()

    contentItem: Column {
        spacing: Metrics.grid

        CassetteCover {
            objectName: "stylePicture"
            width: parent.width
            height: Metrics.cassetteThumbnail
            imageName: root.style.imageName
            visible: root.style.imageName !== ""
        }
        Item {
            width: parent.width
            height: Metrics.cassetteThumbnail
            visible: root.style.imageName === ""

            SymbolIcon {
                anchors.centerIn: parent
                name: AppIcons.appearance.photo
                size: Metrics.symbolHuge
                color: root.theme.primaryColor
            }
        }
        StyledText {
            objectName: "styleName"
            width: parent.width
            text: root.text
            style: TextStyles.footnote
            font.weight: root.isSelected ? Font.DemiBold : Font.Normal
            color: Surfaces.textOn(root.theme, root.ground, root.theme.primaryTextColor)
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }
    }
}

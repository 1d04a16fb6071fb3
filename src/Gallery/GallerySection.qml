// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// One kind of thing, under a heading.
Column {
    id: root

    required property string title
    /// What it is called in the sources.
    property string types
    property alias cell: flow.cell
    property alias columnsAtMost: flow.columnsAtMost
    property alias stageHeight: flow.stageHeight
    default property alias specimens: flow.data
    property AppTheme theme: ThemeEnvironment.theme

    width: parent ? parent.width : 0
    spacing: Metrics.screenMargin

    Column {
        width: parent.width
        spacing: Metrics.grid

        StyledText {
            width: parent.width
            text: root.title
            style: TextStyles.title3
            font.weight: Font.DemiBold
            color: Surfaces.textOn(root.theme, Surfaces.background(root.theme), root.theme.primaryTextColor)
            Accessible.role: Accessible.Heading
            Accessible.name: root.title
        }
        GalleryCaption {
            width: parent.width
            horizontalAlignment: Text.AlignLeft
            text: root.types
            visible: text !== ""
            theme: root.theme
        }
    }
    GalleryFlow {
        id: flow

        width: parent.width
    }
}

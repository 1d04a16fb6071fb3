// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// One song of a list, on a ground of the look, which the insets hold off the sides. A click plays it; a long press or
/// the right button asks for its menu.
ThemedListRow {
    id: root

    property string title
    property string subtitle
    /// How long it is, or where it comes from; never cut off.
    property string trailingText
    property string coverSource
    property bool isCurrent: false
    property bool isFavorite: false

    readonly property color titleColor: Surfaces.textOn(theme, Surfaces.themedRow(theme), theme.primaryTextColor)
    readonly property color currentColor: Surfaces.textOn(theme, Surfaces.themedRow(theme), theme.primaryColor)
    readonly property color quietColor: Surfaces.textOn(theme, Surfaces.themedRow(theme), theme.secondaryTextColor)

    implicitWidth: Metrics.phoneWidth - 2 * Metrics.screenMargin
    implicitHeight: Math.max(Metrics.rowCover, texts.implicitHeight) + 2 * Metrics.rowSpacing
    Accessible.name: title + (subtitle !== "" ? "，" + subtitle : "") + (trailingText !== "" ? "，" + trailingText : "") + (isCurrent ? "，正在播放" : "") + (isFavorite ? "，已喜欢" : "")
    Accessible.selected: isCurrent

    ArtworkImageView {
        id: cover

        anchors.left: parent.left
        anchors.leftMargin: Metrics.rowSpacing
        anchors.verticalCenter: parent.verticalCenter
        source: root.coverSource
        cornerRadius: Metrics.coverRadius

        ThemedArtworkModifier {
            anchors.fill: parent
            theme: root.theme
        }
    }
    Column {
        id: texts

        anchors.left: cover.right
        anchors.leftMargin: Metrics.cardPadding
        anchors.right: marks.left
        anchors.rightMargin: Metrics.rowSpacing
        anchors.verticalCenter: parent.verticalCenter

        StyledText {
            objectName: "title"
            width: parent.width
            text: root.title
            color: root.isCurrent ? root.currentColor : root.titleColor
            // In a look whose texts are of its accent, the colour alone would not tell.
            font.weight: root.isCurrent ? Font.DemiBold : Font.Normal
        }
        StyledText {
            objectName: "subtitle"
            width: parent.width
            text: root.subtitle
            style: TextStyles.footnote
            color: root.quietColor
            visible: text !== ""
        }
    }
    Row {
        id: marks

        anchors.right: trailing.left
        anchors.rightMargin: width > 0 && trailing.text !== "" ? Metrics.rowSpacing : 0
        anchors.verticalCenter: parent.verticalCenter
        spacing: Metrics.rowSpacing

        SymbolIcon {
            objectName: "favoriteMark"
            name: root.isFavorite ? AppIcons.favorite.heartFill : ""
            size: Metrics.symbolTiny
            color: root.theme.primaryColor
            visible: root.isFavorite
        }
        SymbolIcon {
            objectName: "currentMark"
            name: root.isCurrent ? AppIcons.audio.speaker : ""
            size: Metrics.symbolTiny
            color: root.theme.primaryColor
            visible: root.isCurrent
        }
    }
    StyledText {
        id: trailing

        objectName: "trailing"
        anchors.right: parent.right
        anchors.rightMargin: Metrics.cardPadding
        anchors.verticalCenter: parent.verticalCenter
        text: root.trailingText
        style: TextStyles.footnote
        color: root.quietColor
        elide: Text.ElideNone
    }
}

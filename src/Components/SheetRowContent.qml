// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What a row on a card shows: a symbol, if it has one, a title, what is to be said about it beneath, and a mark at its
/// end. Nothing is cut off: a long text makes the row higher.
Item {
    id: root

    property string symbol
    /// Of the square beneath the symbol; transparent shows the symbol alone, in the accent.
    property color symbolColor: "transparent"
    property string title
    property string detail
    /// Symbol at the end.
    property string mark
    property color markColor: Surfaces.accentOn(theme, ground)
    property AppTheme theme: ThemeEnvironment.theme
    readonly property surface ground: Surfaces.themedCard(theme)

    implicitHeight: Math.max(Metrics.settingsItemHeight, texts.implicitHeight + 2 * Metrics.rowSpacing)

    SurfaceImage {
        id: square

        anchors.left: parent.left
        anchors.leftMargin: Metrics.cardPadding
        anchors.verticalCenter: parent.verticalCenter
        width: root.symbol === "" ? 0 : Metrics.settingsSquare
        height: Metrics.settingsSquare
        surface: Surfaces.settingsIcon(root.symbolColor.a > 0 ? root.theme : null, root.symbolColor)

        SymbolIcon {
            objectName: "rowSymbol"
            anchors.centerIn: parent
            name: root.symbol
            size: root.symbolColor.a > 0 ? Metrics.symbolOf(Metrics.settingsGlyph) : Metrics.symbol
            color: root.symbolColor.a > 0 ? SystemColors.accentInk : Surfaces.accentOn(root.theme, root.ground)
        }
    }
    Column {
        id: texts

        anchors.left: square.right
        anchors.leftMargin: root.symbol === "" ? 0 : Metrics.cardPadding
        anchors.right: mark.left
        anchors.rightMargin: Metrics.rowSpacing
        anchors.verticalCenter: parent.verticalCenter

        StyledText {
            objectName: "rowTitle"
            width: parent.width
            text: root.title
            color: Surfaces.textOn(root.theme, root.ground, root.theme.primaryTextColor)
            wrapMode: Text.Wrap
        }
        StyledText {
            objectName: "rowDetail"
            width: parent.width
            visible: root.detail !== ""
            text: root.detail
            style: TextStyles.footnote
            color: Surfaces.textOn(root.theme, root.ground, root.theme.secondaryTextColor)
            wrapMode: Text.Wrap
        }
    }
    SymbolIcon {
        id: mark

        objectName: "rowMark"
        anchors.right: parent.right
        anchors.rightMargin: Metrics.cardPadding
        anchors.verticalCenter: parent.verticalCenter
        width: root.mark === "" ? 0 : size
        name: root.mark
        size: Metrics.symbolSmall
        color: root.markColor
    }
}

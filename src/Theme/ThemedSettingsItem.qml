// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// A row that leads somewhere: a coloured square with a symbol, a title, and a word on how things stand.
FocusScope {
    id: root

    required property string icon
    required property color iconColor
    required property string title
    /// Empty shows none.
    property string subtitle
    property AppTheme theme: ThemeEnvironment.theme

    signal clicked

    implicitWidth: Metrics.menuWidth
    implicitHeight: Math.max(Metrics.settingsItemHeight, titleText.implicitHeight + 2 * Metrics.cardPadding)
    opacity: enabled ? 1 : Metrics.disabledOpacity

    // Within the item, since a button has an icon of another kind.
    T.AbstractButton {
        id: button

        objectName: root.objectName + "Button"
        anchors.fill: parent
        focus: true
        hoverEnabled: true
        focusPolicy: Qt.TabFocus
        text: root.title
        Accessible.name: root.subtitle === "" ? root.title : root.title + "，" + root.subtitle
        Accessible.onPressAction: Press.byAction(button)
        Keys.onReturnPressed: event => Press.byKey(button, event)
        Keys.onEnterPressed: event => Press.byKey(button, event)
        onClicked: root.clicked()

        background: ThemedHighlight {
            radius: Metrics.coverRadius
            isHovered: button.hovered
            isPressed: button.down
            isFocused: button.visualFocus
            theme: root.theme
        }
        Item {
            anchors.fill: parent

            SurfaceImage {
                id: square

                objectName: "square"
                anchors.left: parent.left
                anchors.leftMargin: Metrics.cardPadding
                anchors.verticalCenter: parent.verticalCenter
                width: Metrics.settingsSquare
                height: Metrics.settingsSquare
                surface: Surfaces.settingsIcon(root.theme, root.iconColor)

                SymbolIcon {
                    objectName: "glyph"
                    anchors.centerIn: parent
                    name: root.icon
                    size: Metrics.symbolOf(Metrics.settingsGlyph)
                    color: SystemColors.accentInk
                }
            }
            StyledText {
                id: titleText

                objectName: "itemTitle"
                anchors.left: square.right
                anchors.leftMargin: Metrics.cardPadding
                anchors.right: subtitleText.left
                anchors.rightMargin: Metrics.rowSpacing
                anchors.verticalCenter: parent.verticalCenter
                text: root.title
                color: root.theme.primaryTextColor
            }
            StyledText {
                id: subtitleText

                objectName: "itemSubtitle"
                anchors.right: chevron.left
                anchors.rightMargin: root.subtitle === "" ? 0 : Metrics.grid
                anchors.baseline: titleText.baseline
                // A long word on how things stand leaves the title half of the row.
                width: Math.min(implicitWidth, parent.width / 2 - Metrics.settingsSquare)
                text: root.subtitle
                style: TextStyles.subheadline
                color: root.theme.secondaryTextColor
            }
            SymbolIcon {
                id: chevron

                objectName: "chevron"
                anchors.right: parent.right
                anchors.rightMargin: Metrics.rowSpacing
                anchors.verticalCenter: parent.verticalCenter
                name: AppIcons.navigation.forward
                size: Metrics.symbolOf(TextStyles.caption1.size)
                color: Qt.alpha(root.theme.secondaryTextColor, Metrics.quietMarkOpacity * root.theme.secondaryTextColor.a)
            }
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// One song of a list. A click plays it; a long press or the right button asks for its menu.
T.ItemDelegate {
    id: root

    required property int index
    required property string songId
    required property string title
    required property string subtitle
    required property string durationText
    required property string platformText
    required property string coverSource
    required property bool isCurrent
    required property bool isDeletable
    required property bool isFavorite
    /// The keyboard stands on this row and is in use.
    property bool showsFocus: false
    /// An online song's length is not known: its platform stands there instead.
    readonly property string trailingText: durationText !== "" ? durationText : platformText
    /// Room at each side, so that rows of a wide window stay readable.
    property int sideMargin: Metrics.screenMargin

    signal menuRequested(point position)

    implicitHeight: Metrics.rowHeight
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    text: title
    Accessible.name: title + (subtitle !== "" ? "，" + subtitle : "") + (trailingText !== "" ? "，" + trailingText : "") + (isFavorite ? "，已喜欢" : "")
    Accessible.selected: isCurrent
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

        ArtworkImageView {
            id: cover

            anchors.left: parent.left
            anchors.leftMargin: root.sideMargin
            anchors.verticalCenter: parent.verticalCenter
            source: root.coverSource
            cornerRadius: Metrics.coverRadius
        }
        Column {
            anchors.left: cover.right
            anchors.leftMargin: Metrics.cardPadding
            anchors.right: marks.left
            anchors.rightMargin: Metrics.cardPadding
            anchors.verticalCenter: parent.verticalCenter

            StyledText {
                objectName: "title"
                width: parent.width
                text: root.title
                style: TextStyles.body
                color: root.isCurrent ? SystemColors.accentText : SystemColors.label
            }
            StyledText {
                width: parent.width
                text: root.subtitle
                style: TextStyles.footnote
                color: SystemColors.secondaryLabel
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
                color: SystemColors.red
                visible: root.isFavorite
            }
            SymbolIcon {
                objectName: "currentMark"
                name: root.isCurrent ? AppIcons.audio.speaker : ""
                size: Metrics.symbolTiny
                color: SystemColors.accent
                visible: root.isCurrent
            }
        }
        StyledText {
            id: trailing

            anchors.right: parent.right
            anchors.rightMargin: root.sideMargin
            anchors.verticalCenter: parent.verticalCenter
            text: root.trailingText
            style: TextStyles.footnote
            color: SystemColors.secondaryLabel
            elide: Text.ElideNone
        }
    }
}

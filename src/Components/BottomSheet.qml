// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import QtQuick.Templates as T
import Cadorel

/// A sheet that rises from the lower edge, on the ground of the look, with a title, a way out and, if wanted, a way on.
/// What it holds is laid out beneath the title. Whoever may close it by a press beside it may draw it down, too.
Popup {
    id: root

    property string title
    property string cancelName: "sheetCancel"
    /// Text of the button that closes it; empty when the sheet has none.
    property string cancelText: "取消"
    property string acceptName: "sheetAccept"
    /// Text of the button that accepts; empty when the sheet has none in its title bar.
    property string acceptText
    property bool canAccept: true
    /// The sheet is as high as what it holds, not as the window.
    property bool hugsContent: false
    property AppTheme theme: ThemeEnvironment.theme
    readonly property int room: parent ? Math.min(parent.height - Metrics.touchTarget, Metrics.phoneHeight) : Metrics.phoneHeight
    readonly property bool isDrawable: (closePolicy & Popup.CloseOnPressOutside) !== 0
    /// How far it is below its place: while it rises, and while it is drawn down.
    property real sunk: 0
    default property alias body: column.data

    signal accepted

    /// It has been drawn down and let go.
    function letGo(): void {
        if (sunk > Math.min(Metrics.sheetReach, height / 2))
            close();
        else
            settle.start();
    }

    parent: T.Overlay.overlay
    width: parent ? Math.min(parent.width, Metrics.sheetWidth) : Metrics.sheetWidth
    height: hugsContent ? Math.min(room, column.implicitHeight) : room
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? parent.height - height + sunk : 0
    padding: 0
    modal: !SheetStack.isCovered(root)
    focus: true
    onAboutToShow: SheetStack.rise(root)
    onAboutToHide: SheetStack.sink(root)
    Component.onDestruction: SheetStack.sink(root)

    T.Overlay.modal: Rectangle {
        color: SystemColors.scrim
    }
    enter: Transition {
        NumberAnimation {
            target: root
            property: "sunk"
            from: root.height
            to: 0
            duration: Metrics.sheetDuration
            easing.type: Easing.OutCubic
        }
    }
    background: Item {
        // The lower corners lie beyond the window's edge.
        SurfaceImage {
            objectName: "sheetGround"
            width: parent.width
            height: parent.height + Metrics.sheetRadius
            surface: Surfaces.previewScreen(root.theme, Metrics.sheetRadius)
        }
        // Where the veil cannot make what lies beneath any darker.
        Rectangle {
            objectName: "sheetEdge"
            width: parent.width
            height: parent.height + Metrics.sheetRadius
            radius: Metrics.sheetRadius
            color: "transparent"
            border.width: Metrics.hairline
            border.color: Qt.alpha(root.theme.primaryTextColor, Metrics.pressedOpacity)
            visible: root.theme.isDark
        }
    }

    NumberAnimation {
        id: settle

        target: root
        property: "sunk"
        to: 0
        duration: Motion.scaled(Metrics.pressDuration)
        easing.type: Easing.OutCubic
    }
    ColumnLayout {
        id: column

        anchors.fill: parent
        spacing: 0

        Accessible.role: Accessible.Dialog
        Accessible.name: root.title

        Item {
            id: header

            readonly property real leftRoom: cancelButton.visible ? cancelButton.width : Metrics.screenMargin
            readonly property real rightRoom: acceptButton.visible ? acceptButton.width : Metrics.screenMargin

            objectName: "sheetHeader"
            Layout.fillWidth: true
            Layout.preferredHeight: Math.max(Metrics.touchTarget + Metrics.rowSpacing, titleText.implicitHeight + 2 * Metrics.cardPadding)

            DragHandler {
                target: null
                enabled: root.isDrawable
                xAxis.enabled: false
                onTranslationChanged: {
                    if (active)
                        root.sunk = Math.max(0, translation.y);
                }
                onActiveChanged: {
                    if (!active)
                        root.letGo();
                }
            }
            Rectangle {
                objectName: "grabber"
                anchors.horizontalCenter: parent.horizontalCenter
                y: Metrics.grid
                width: Metrics.grabberWidth
                height: Metrics.grid
                radius: height / 2
                color: Qt.alpha(root.theme.primaryTextColor, 2 * Metrics.pressedOpacity)
                visible: root.isDrawable
            }
            TextButton {
                id: cancelButton

                objectName: root.cancelName
                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
                visible: root.cancelText !== ""
                role: TextButton.Plain
                text: root.cancelText
                onClicked: root.close()
            }
            StyledText {
                id: titleText

                objectName: "sheetTitle"
                anchors.verticalCenter: parent.verticalCenter
                // In the middle, unless one of the buttons has a longer text.
                x: Math.round(Math.max(header.leftRoom, Math.min((parent.width - width) / 2, parent.width - header.rightRoom - width)))
                width: Math.min(implicitWidth, parent.width - header.leftRoom - header.rightRoom)
                text: root.title
                style: TextStyles.headline
                color: Surfaces.textOn(root.theme, Surfaces.background(root.theme), root.theme.primaryTextColor)
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                maximumLineCount: 2
                // Rather a little smaller than a last character in a line of its own.
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: Math.round(style.size * Metrics.smallestTitle)
            }
            TextButton {
                id: acceptButton

                objectName: root.acceptName
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                visible: root.acceptText !== ""
                role: TextButton.Plain
                text: root.acceptText
                enabled: root.canAccept
                onClicked: root.accepted()
            }
        }
    }
}

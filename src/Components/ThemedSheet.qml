// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Cadorel

/// A sheet of the look that is as high as what it holds, and scrolls what the window has no room for. It is closed by
/// its one button, by Escape, by a press beside it and by drawing it down, and leaves the keyboard where it found it.
BottomSheet {
    id: root

    /// What stays in sight beneath what scrolls.
    property alias foot: footSlot.data
    /// What the keyboard speaks to first.
    property Item firstFocus
    property Item focusBefore
    /// Its button closes it; else whoever owns it does, once it has what it wants.
    property bool closesOnAccept: true
    default property alias content: rows.data

    cancelText: ""
    acceptText: "完成"
    hugsContent: true
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside
    exit: Transition {
        NumberAnimation {
            target: root
            property: "sunk"
            to: root.height
            duration: Motion.scaled(Metrics.segmentDuration)
            easing.type: Easing.InCubic
        }
    }
    onAccepted: {
        if (closesOnAccept)
            close();
    }
    onAboutToShow: {
        flickable.contentY = 0;
        focusBefore = (parent as Item)?.Window.activeFocusItem ?? null;
    }
    onOpened: {
        if (firstFocus)
            firstFocus.forceActiveFocus(Qt.PopupFocusReason);
    }
    onClosed: {
        // Not where something else has taken the keyboard meanwhile, such as a sheet that this one has led to.
        const holder = focusBefore;
        focusBefore = null;
        if (holder && holder.visible && !(parent as Item)?.Window.activeFocusItem?.activeFocusOnTab)
            holder.forceActiveFocus(Qt.PopupFocusReason);
    }

    FormFlickable {
        id: flickable

        objectName: "sheetScroller"
        Layout.fillWidth: true
        Layout.fillHeight: true
        implicitHeight: contentHeight
        clip: interactive
        interactive: contentHeight > height + 1
        contentHeight: rows.implicitHeight + Metrics.rowSpacing + Metrics.sectionGap

        Column {
            id: rows

            x: Metrics.screenMargin
            y: Metrics.rowSpacing
            width: flickable.width - 2 * Metrics.screenMargin
            spacing: Metrics.screenMargin
        }
    }
    Item {
        id: footSlot

        Layout.fillWidth: true
        implicitHeight: childrenRect.height
    }
}

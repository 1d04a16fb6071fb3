// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel
import CadorelGallery

/// One component in one state above its caption. The component stands in the middle; one that is as wide as it may be
/// binds its width to `room`.
Item {
    id: root

    property string caption
    property int pose: GalleryPoses.Idle
    /// Columns that it takes; 0 takes all.
    property int span: 1
    default property alias content: stage.data
    readonly property alias room: stage.width
    readonly property GalleryFlow flow: parent as GalleryFlow
    readonly property Item shown: stage.children.length > 0 ? stage.children[0] : null

    width: flow ? flow.span(span) : 0
    height: stage.height + (text.visible ? Metrics.rowSpacing + text.height : 0)
    Component.onCompleted: {
        if (pose !== GalleryPoses.Idle)
            GalleryPoses.take(shown, pose);
    }

    Item {
        id: stage

        width: parent.width
        height: Math.max(root.flow ? root.flow.stageHeight : 0, root.shown ? root.shown.height : 0)
    }
    Binding {
        target: root.shown
        property: "x"
        value: root.shown ? Math.round((stage.width - root.shown.width) / 2) : 0
    }
    Binding {
        target: root.shown
        property: "y"
        value: root.shown ? Math.round((stage.height - root.shown.height) / 2) : 0
    }
    GalleryCaption {
        id: text

        y: stage.height + Metrics.rowSpacing
        width: parent.width
        text: root.caption
        visible: root.caption !== ""
    }
}

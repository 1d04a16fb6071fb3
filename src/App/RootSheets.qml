// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The sheets that several screens open, and where files are dropped.
Item {
    id: root

    required property ScreenModels screens

    DropArea {
        id: dropArea

        objectName: "dropArea"
        anchors.fill: parent
        keys: ["text/uri-list"]
        onDropped: drop => {
            drop.acceptProposedAction();
            root.screens.library.importUrls(drop.urls);
        }

        DropHighlight {
            objectName: "dropHighlight"
            anchors.fill: parent
            visible: dropArea.containsDrag
        }
    }

    FilePickerSheet {
        id: pickerSheet

        objectName: "pickerSheet"
        onChosen: urls => root.screens.library.importUrls(urls)
    }
    Connections {
        target: root.screens.library

        function onOwnPickerRequested(folder: bool): void {
            pickerSheet.show(folder);
        }
    }

    Loader {
        // The first frame does not pay for sheets that few starts come to.
        readonly property bool isNeeded: root.screens.playlists.picker.isOpen || root.screens.playlists.editor.showCreateSheet

        active: false
        onIsNeededChanged: active = true
        // qmllint disable unqualified
        sourceComponent: PlaylistSheets {
            playlists: root.screens.playlists
        }
        // qmllint enable unqualified
    }
    Loader {
        readonly property bool isNeeded: root.screens.online.settings.isOpen

        active: false
        onIsNeededChanged: active = true
        // qmllint disable unqualified
        sourceComponent: ApiSettingsSheet {
            objectName: "apiSettings"
            settings: root.screens.online.settings
        }
        // qmllint enable unqualified
    }
    Loader {
        readonly property bool isNeeded: root.screens.queue.isOpen

        active: false
        onIsNeededChanged: active = true
        // qmllint disable unqualified
        sourceComponent: QueueSheet {
            objectName: "queueSheet"
            queue: root.screens.queue
        }
        // qmllint enable unqualified
    }
    Loader {
        readonly property bool isNeeded: root.screens.equalizer.isOpen

        active: false
        onIsNeededChanged: active = true
        // qmllint disable unqualified
        sourceComponent: EqualizerView {
            objectName: "equalizerView"
            equalizer: root.screens.equalizer
        }
        // qmllint enable unqualified
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Cadorel
import CadorelGallery

/// All components in all their states, in a look that can be changed at any time: 1 to 4 show a page, L changes the
/// look, D light and dark, T the size of texts.
ApplicationWindow {
    id: window

    required property GalleryAppearance appearance
    property int page: 0
    /// With the whole page in sight.
    readonly property real wholeHeight: bar.height + scene.contentHeight
    readonly property var pages: [controlsPage, symbolsPage, picturesPage, textPage]

    function show(index: int): void {
        page = index;
        scene.contentY = 0;
    }

    minimumWidth: Metrics.minimumWidth
    minimumHeight: Metrics.minimumHeight
    title: "外观一览"
    color: SystemColors.background

    Shortcut {
        sequence: "L"
        onActivated: ThemeManager.toggleTheme()
    }
    Shortcut {
        sequence: "D"
        onActivated: bar.toggleScheme()
    }
    Shortcut {
        sequence: "T"
        onActivated: bar.toggleScale()
    }
    Shortcut {
        sequence: "1"
        onActivated: window.show(0)
    }
    Shortcut {
        sequence: "2"
        onActivated: window.show(1)
    }
    Shortcut {
        sequence: "3"
        onActivated: window.show(2)
    }
    Shortcut {
        sequence: "4"
        onActivated: window.show(3)
    }

    Component {
        id: controlsPage

        ControlsPage {}
    }
    Component {
        id: symbolsPage

        SymbolsPage {}
    }
    Component {
        id: picturesPage

        PicturesPage {}
    }
    Component {
        id: textPage

        TextPage {}
    }

    ThemedBackground {
        anchors.fill: parent
    }
    Flickable {
        id: scene

        objectName: "scene"
        anchors.top: bar.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        clip: true
        contentHeight: body.height
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: SlimScrollBar {}

        Loader {
            id: body

            objectName: "page"
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(scene.width - 2 * Metrics.screenMargin, GalleryMetrics.pageWidth)
            sourceComponent: window.pages[window.page]
        }
    }
    GalleryBar {
        id: bar

        width: parent.width
        appearance: window.appearance
        page: window.page
        onPageChosen: page => window.show(page)
    }
}

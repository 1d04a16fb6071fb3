// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// The keys that work wherever the keyboard is in the window, but not beneath a sheet. One that is held down counts once,
/// but for the volume.
Item {
    id: root

    required property ScreenModels screens

    signal tabRequested(int tab)
    signal nowPlayingRequested

    Shortcut {
        sequence: "Ctrl+O"
        autoRepeat: false
        onActivated: root.screens.library.chooseFiles()
    }
    Shortcut {
        sequence: "Ctrl+E"
        autoRepeat: false
        onActivated: root.screens.equalizer.open()
    }
    Shortcut {
        sequence: "Ctrl+U"
        autoRepeat: false
        onActivated: root.screens.queue.open()
    }
    Shortcut {
        sequence: "Ctrl+P"
        autoRepeat: false
        enabled: root.screens.viewModel.hasCurrentSong
        onActivated: root.nowPlayingRequested()
    }
    Shortcut {
        sequence: "Ctrl+Left"
        autoRepeat: false
        onActivated: root.screens.viewModel.previous()
    }
    Shortcut {
        sequence: "Ctrl+Right"
        autoRepeat: false
        onActivated: root.screens.viewModel.next()
    }
    Shortcut {
        sequence: "Ctrl+Up"
        onActivated: root.screens.playback.changeVolume(Metrics.volumeStep)
    }
    Shortcut {
        sequence: "Ctrl+Down"
        onActivated: root.screens.playback.changeVolume(-Metrics.volumeStep)
    }
    // The tabs as they stand in the bar.
    Repeater {
        model: root.screens.content.visibleTabs

        delegate: Item {
            id: place

            required property int index
            required property int tab

            Shortcut {
                sequence: "Ctrl+" + (place.index + 1)
                autoRepeat: false
                onActivated: root.tabRequested(place.tab)
            }
        }
    }
}

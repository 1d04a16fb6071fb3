// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The listener's playlists.
FocusScope {
    id: root

    required property CadorelViewModel viewModel
}

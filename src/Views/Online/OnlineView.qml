// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The online platforms: search, charts, and the server behind them.
FocusScope {
    id: root

    required property CadorelViewModel viewModel
}

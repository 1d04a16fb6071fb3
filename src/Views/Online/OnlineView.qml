// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The search with the sheet that it opens.
SearchView {
    id: root

    ApiSettingsSheet {
        objectName: "apiSettings"
        settings: root.online.settings
    }
}

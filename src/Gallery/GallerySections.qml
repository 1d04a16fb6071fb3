// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Several sections of a page.
Column {
    spacing: 2 * Metrics.sectionGap
}

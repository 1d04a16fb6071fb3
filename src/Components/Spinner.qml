// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Something is under way whose end nobody knows.
SymbolIcon {
    id: root

    name: AppIcons.status.loading
    size: Metrics.symbolSmall
    color: ThemeEnvironment.theme.secondaryTextColor

    RotationAnimator on rotation {
        running: root.visible && !Motion.isReduced
        from: 0
        to: 360
        duration: Metrics.spinnerTurn
        loops: Animation.Infinite
    }
}

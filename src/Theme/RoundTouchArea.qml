// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// Where a round item answers: its circle, and about a small one as much as a finger needs.
QtObject {
    /// Of the circle, which fills the item.
    required property real diameter

    function contains(point: point): bool {
        const radius = Math.max(diameter, Metrics.touchTarget) / 2;
        return Math.hypot(point.x - diameter / 2, point.y - diameter / 2) <= radius;
    }
}

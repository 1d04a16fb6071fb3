// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Lays specimens out in columns of one width; a specimen may take several of them.
Flow {
    id: root

    /// A column is at least this wide.
    property real cell: 104
    /// Room above the captions, for the specimens to stand on one line.
    property real stageHeight: 72
    /// So that what belongs together can be one line of them; 0 for no limit.
    property int columnsAtMost: 0
    readonly property int columnsThatFit: Math.max(1, Math.floor((width + spacing) / (cell + spacing)))
    readonly property int columns: columnsAtMost > 0 ? Math.min(columnsAtMost, columnsThatFit) : columnsThatFit
    readonly property real column: Math.floor((width - (columns - 1) * spacing) / columns)

    /// Width of that many columns, of all of them where there are not so many; 0 asks for all.
    function span(count: int): real {
        return count === 0 || count >= columns ? width : count * column + (count - 1) * spacing;
    }

    spacing: Metrics.screenMargin
}

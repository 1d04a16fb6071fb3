// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace cadorel {

/// One step from an old list of rows to a new one: a contiguous group of rows goes, moves or comes.
struct RowStep
{
    enum class Kind { remove, move, insert };

    Kind kind = Kind::remove;
    /// First row of the group, counted in the list as the steps before have left it. For an insertion also
    /// the first row of the group in the new list.
    qsizetype first = 0;
    qsizetype count = 0;
    /// Where a moved group stands afterwards; always less than `first`.
    qsizetype to = 0;
};

/// Steps that turn the rows @p before into @p after: removals from the back to the front, then moves, then
/// insertions from the front to the back. Nothing when the lists differ so much that showing the new one
/// afresh costs less than @p limit steps. Ids may repeat. Pure; any thread.
std::optional<QList<RowStep>> rowDifference(const QList<QString> &before, const QList<QString> &after,
                                            qsizetype limit);

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

#include <algorithm>
#include <array>
#include <optional>

namespace cadorel {

// For enumerations whose cases are described by a table in the order of their declaration, each row with the
// `rawValue` that stands for the case in stored data. Any thread.

/// All cases, in their order.
template <typename Case, typename Row, size_t count>
QList<Case> casesOf(const std::array<Row, count> &)
{
    QList<Case> cases;
    for (size_t index = 0; index < count; ++index)
        cases.append(static_cast<Case>(index));
    return cases;
}

/// The case of a stored text; nothing for an unknown one.
template <typename Case, typename Row, size_t count>
std::optional<Case> caseOf(const std::array<Row, count> &table, const QString &rawValue)
{
    const auto found = std::ranges::find(table, rawValue, &Row::rawValue);
    if (found == table.end())
        return std::nullopt;
    return static_cast<Case>(found - table.begin());
}

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace cadorel {

/// The time of a text like "Sat, 09 Mar 2024 08:07:06 GMT", in UTC; nothing for any other form. The zone is
/// GMT, UTC, one of the United States' abbreviations, or a distance like +0100, +01:00 or GMT+1. Reentrant.
std::optional<QDateTime> dateFromHttpText(const QString &text);

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/Subsonic/SubsonicRecords.h"

#include <QUrl>

#include <optional>

namespace cadorel {

/// The longest message of a server that is shown, in UTF-16 units.
constexpr qsizetype longestRefusal = 400;

/// What a server says of the refused request for @p asked, fit to be shown: without the signature of the
/// address, which some servers repeat in what they say, and no longer than `longestRefusal`. Any thread.
std::optional<SubsonicError> fitToShow(const std::optional<SubsonicError> &error, const QUrl &asked);

} // namespace cadorel

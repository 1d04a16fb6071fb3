// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Preferences.h"

#include <cmath>
#include <optional>

namespace cadorel {

// Settings as the preferences hold them, which may be what no operation writes. Main thread.

/// Nothing when there is none, or what is none.
inline std::optional<double> storedNumber(const Preferences &preferences, const QString &key)
{
    const std::optional<double> number = preferences.doubleValue(key);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

/// The same for one that a float holds.
inline std::optional<float> storedFloat(const Preferences &preferences, const QString &key)
{
    const auto number = static_cast<float>(preferences.doubleValue(key).value_or(NAN));
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// The case whose raw value is stored, as @p caseOf knows it; else @p fallback.
template <typename Case>
Case storedCase(const Preferences &preferences, const QString &key,
                std::optional<Case> (*caseOf)(const QString &rawValue), Case fallback)
{
    const std::optional<QString> rawValue = preferences.stringValue(key);
    return rawValue ? caseOf(*rawValue).value_or(fallback) : fallback;
}

} // namespace cadorel

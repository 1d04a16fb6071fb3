// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QUrl>

#include <optional>

namespace cadorel {

/// An address of audio or of a picture that an answer tells. A server has no say in what else the player
/// could open: files and devices of this machine count as none. Any thread.
inline std::optional<QUrl> toldAddress(const QUrl &url)
{
    const bool isWeb =
        url.scheme() == QLatin1StringView("http") || url.scheme() == QLatin1StringView("https");
    return url.isValid() && isWeb && !url.host().isEmpty() ? std::optional(url) : std::nullopt;
}

} // namespace cadorel

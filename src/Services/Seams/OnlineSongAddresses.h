// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/OnlineSong.h"

#include <QString>
#include <QUrl>

#include <optional>

namespace cadorel {

/// Builds the API addresses of online songs, which store none themselves. Main thread.
class OnlineSongAddresses
{
public:
    virtual ~OnlineSongAddresses() = default;

    /// The API address that leads to the audio of @p song in @p quality ("320k"); nothing when none can be
    /// built.
    virtual std::optional<QUrl> getPlayUrl(const OnlineSong &song, const QString &quality) const = 0;
    /// The API address that leads to the cover of @p song; nothing when none can be built.
    virtual std::optional<QUrl> getCoverUrl(const OnlineSong &song) const = 0;
};

} // namespace cadorel

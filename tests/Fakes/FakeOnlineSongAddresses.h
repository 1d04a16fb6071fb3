// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/Seams/OnlineSongAddresses.h"

#include <QStringList>

namespace cadorel {

/// Addresses of an API that is not there.
class FakeOnlineSongAddresses : public OnlineSongAddresses
{
public:
    /// No address can be built.
    bool silent = false;
    /// What the id is put behind to get the address of the audio.
    QString playBase = QStringLiteral("https://api.example/url?id=");
    /// Qualities that were asked for, in order.
    mutable QStringList qualities;

    std::optional<QUrl> getPlayUrl(const OnlineSong &song, const QString &quality) const override
    {
        qualities.append(quality);
        if (silent)
            return std::nullopt;
        return QUrl(playBase + song.id);
    }

    std::optional<QUrl> getCoverUrl(const OnlineSong &song) const override
    {
        if (silent)
            return std::nullopt;
        return QUrl(QStringLiteral("https://api.example/pic?id=") + song.id);
    }
};

} // namespace cadorel

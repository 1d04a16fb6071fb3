// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/MusicPlatform.h"

#include <QString>

#include <optional>

namespace cadorel {

/// A chart as the API names it.
struct TopListItem
{
    QString id;
    QString name;
    std::optional<QString> updateFrequency;

    /// How often it changes, for a listener to read.
    QString displayFrequency() const;
};

/// A chart of an online platform. Its `id` is the identity. A value type; any thread.
struct TopList
{
    QString id;
    QString name;
    /// How often it changes, for a listener to read.
    QString updateFrequency;
    MusicPlatform platform = MusicPlatform::netease;

    static TopList from(const TopListItem &item, MusicPlatform platform);

    friend bool operator==(const TopList &a, const TopList &b) = default;
};

} // namespace cadorel

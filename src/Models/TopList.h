// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/MusicPlatform.h"

#include <QString>

namespace cadorel {

/// A chart of an online platform. Its `id` is the identity.
struct TopList
{
    QString id;
    QString name;
    /// How often it changes, for a listener to read.
    QString updateFrequency;
    MusicPlatform platform = MusicPlatform::netease;

    friend bool operator==(const TopList &a, const TopList &b) = default;
};

} // namespace cadorel

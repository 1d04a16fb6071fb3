// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/MusicPlatform.h"

#include <QStringList>

namespace cadorel {

/// The names of all platforms, in their order, for a listener to choose from.
inline QStringList platformNames()
{
    QStringList names;
    for (const MusicPlatform platform : allMusicPlatforms())
        names.append(displayName(platform));
    return names;
}

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace cadorel {

/// Where the player keeps what is its own. Absolute paths without a slash at the end; made at start.
struct Directories
{
    /// The listener's music in the player's keeping, visible to the file manager.
    QString documents;
    /// Index, covers, lyrics and preferences.
    QString applicationSupport;
    /// What may be thrown away.
    QString caches;
};

} // namespace cadorel

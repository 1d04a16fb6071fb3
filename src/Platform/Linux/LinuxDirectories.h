// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Directories.h"

namespace cadorel {

/// Finds the player's directories by the XDG rules and makes them: the two of the data and the cache for this
/// user alone, the one with the music as every new directory. Where the music directory refuses one, the
/// music goes to "Music" in the data directory; that, and a directory that cannot be made, is logged. Does
/// not depend on the application's name.
Directories makeDirectories();

} // namespace cadorel

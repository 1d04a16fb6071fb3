// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace cadorel {

/// What follows a song.
enum class PlayMode { sequential, shuffle, repeatOne, repeatAll };

QString rawValue(PlayMode mode);
/// Name of the symbol that stands for the mode.
QString symbol(PlayMode mode);
/// Name of the mode as a listener reads it.
QString label(PlayMode mode);
/// The mode that the mode button goes to: sequential, repeatAll, shuffle, repeatOne and round again. This is
/// not the declaration order.
PlayMode toggled(PlayMode mode);

} // namespace cadorel

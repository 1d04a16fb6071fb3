// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Support/MadeHome.h"

#include <QString>

namespace cadorel {

/// Makes an MP3 that sounds from its first moment: 192 kbit/s, stereo.
/// @return its path
QString makeSound(const MadeHome &home, const QString &name, int seconds);

/// Lets the next start of the player in this home bring a song back, paused at its beginning.
void leaveSnapshot(const MadeHome &home, const QString &file);

/// Seconds of a long measurement: BENCH_SECONDS of the environment, or what is usual.
int measuredSeconds(int usual);

} // namespace cadorel

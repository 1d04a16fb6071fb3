// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace cadorel {

/// What a server that remembers how loud streams were and where, so that the next ones begin like them, knows
/// the streams of this process by. Else it would be their role, and all players of music would be as one.
inline constexpr auto streamGroup = "sink-input-by-application-id:com.cadorel";

/// Says of all that this process will play that it is music, also through libraries that do not say so
/// themselves: a server silences only music while a call rings. And that it is of streamGroup. What the
/// environment says already counts more. Before the process has a second thread.
void declareMusic();

} // namespace cadorel

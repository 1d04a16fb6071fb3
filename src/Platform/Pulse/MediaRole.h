// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace cadorel {

/// Says of all that this process will play that it is music, also through libraries that do not say so
/// themselves: a server silences only music while a call rings. What the environment says already counts
/// more. Before the process has a second thread.
void declareMusic();

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace cadorel {

/// Gives the memory that was freed, but that the allocator keeps for later, back to the system. For the end
/// of work that held much for a short time. Takes some milliseconds, in which other threads may wait for
/// memory: from any thread but the main one.
void giveBackFreeMemory();

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>

namespace cadorel {

class PulseConnection;

/// Lets the server forget on which device the streams of that group were last put, but not how loud they
/// were: else the next ones would begin there, in another run of the program. A stream of the group that
/// still plays would be remembered anew. Not on the connection's thread, nor with its lock held.
/// @param limit for the whole of it; a server that is slower remembers
void forgetDevice(PulseConnection &connection, const char *group, std::chrono::milliseconds limit);

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Platform.h"

namespace cadorel {

/// The real machine: every interface filled with its implementation on Linux. Needs the application object.
/// Main thread.
Platform makeLinuxPlatform(const Directories &directories);

} // namespace cadorel

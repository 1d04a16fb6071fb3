// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace cadorel {

/// Throws the std::runtime_error that tells a listener that there is nothing to play on.
[[noreturn]] void throwNoDevice();

} // namespace cadorel

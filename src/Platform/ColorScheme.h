// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace cadorel {

/// Whether screens are drawn dark on light or light on dark.
enum class ColorScheme { light, dark };

} // namespace cadorel

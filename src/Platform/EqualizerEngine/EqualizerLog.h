// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLoggingCategory>

namespace cadorel {

/// Diagnostics of the equalizer engine: "cadorel.platform.equalizer". Never carries a path.
Q_DECLARE_LOGGING_CATEGORY(equalizerLog)

} // namespace cadorel

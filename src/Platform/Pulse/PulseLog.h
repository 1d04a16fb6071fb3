// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLoggingCategory>

namespace cadorel {

/// Diagnostics of connections to the sound server.
Q_DECLARE_LOGGING_CATEGORY(pulseLog)

} // namespace cadorel

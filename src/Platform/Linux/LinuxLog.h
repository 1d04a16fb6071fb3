// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLoggingCategory>

namespace cadorel {

/// Diagnostics of what the player asks of the system and the desktop.
Q_DECLARE_LOGGING_CATEGORY(linuxLog)

} // namespace cadorel

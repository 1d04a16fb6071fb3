// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Pulse/PulseLog.h"

namespace cadorel {

Q_LOGGING_CATEGORY(pulseLog, "cadorel.platform.pulse", QtWarningMsg)

} // namespace cadorel

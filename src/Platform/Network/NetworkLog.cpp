// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Network/NetworkLog.h"

namespace cadorel {

Q_LOGGING_CATEGORY(networkLog, "cadorel.platform.network", QtWarningMsg)

} // namespace cadorel

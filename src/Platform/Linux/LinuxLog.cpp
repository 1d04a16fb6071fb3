// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/LinuxLog.h"

namespace cadorel {

Q_LOGGING_CATEGORY(linuxLog, "cadorel.platform.linux", QtWarningMsg)

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpv/MpvLog.h"

namespace cadorel {

Q_LOGGING_CATEGORY(mpvLog, "cadorel.platform.mpv", QtCriticalMsg)

} // namespace cadorel

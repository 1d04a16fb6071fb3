// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/EqualizerLog.h"

namespace cadorel {

Q_LOGGING_CATEGORY(equalizerLog, "cadorel.platform.equalizer", QtCriticalMsg)

} // namespace cadorel

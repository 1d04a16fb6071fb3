// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/NoDevice.h"

#include <stdexcept>

namespace cadorel {

void throwNoDevice()
{
    throw std::runtime_error("没有可用的音频设备");
}

} // namespace cadorel

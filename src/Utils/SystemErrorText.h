// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace cadorel {

/// Text of a system error for a listener to read. @param code errno. Any thread.
QString systemErrorText(int code);

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace cadorel {

/// Text from outside as it may stand in a log line: control characters and line ends, with which it could
/// forge lines of its own, become replacement characters. Any thread.
QString logText(const QString &text);

} // namespace cadorel

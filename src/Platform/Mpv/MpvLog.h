// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLoggingCategory>

namespace cadorel {

/// Diagnostics of the stream player: "cadorel.platform.mpv". Never carries an address or libmpv's own
/// messages, which may quote one.
Q_DECLARE_LOGGING_CATEGORY(mpvLog)

} // namespace cadorel

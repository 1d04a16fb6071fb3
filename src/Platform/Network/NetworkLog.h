// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLoggingCategory>

namespace cadorel {

/// Diagnostics of web transfers. Addresses go through redacted(), headers never appear.
Q_DECLARE_LOGGING_CATEGORY(networkLog)

} // namespace cadorel

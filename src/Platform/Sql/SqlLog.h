// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLoggingCategory>

namespace cadorel {

/// Diagnostics of the preferences database.
Q_DECLARE_LOGGING_CATEGORY(sqlLog)

} // namespace cadorel

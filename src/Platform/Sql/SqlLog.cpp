// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Sql/SqlLog.h"

namespace cadorel {

Q_LOGGING_CATEGORY(sqlLog, "cadorel.platform.sql", QtWarningMsg)

} // namespace cadorel

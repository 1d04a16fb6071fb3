// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoroTask>

namespace cadorel {

/// Lets an operation run on that nobody waits for.
inline void detach(QCoro::Task<void> task)
{
    Q_UNUSED(task);
}

} // namespace cadorel

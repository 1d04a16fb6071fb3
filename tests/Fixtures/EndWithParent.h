// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>

#include <csignal>
#include <sys/prctl.h>

namespace cadorel {

/// Lets the kernel end @p process together with the one that starts it, however that ends.
inline void endWithParent(QProcess &process)
{
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

} // namespace cadorel

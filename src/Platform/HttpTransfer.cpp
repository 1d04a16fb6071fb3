// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/HttpTransfer.h"

namespace cadorel {

void HttpTransfer::cancel()
{
    if (m_cancelled)
        return;
    m_cancelled = true;
    Q_EMIT cancelled();
}

void HttpTransfer::setPaused(bool paused)
{
    if (m_paused == paused)
        return;
    m_paused = paused;
    Q_EMIT pausedChanged(paused);
}

} // namespace cadorel

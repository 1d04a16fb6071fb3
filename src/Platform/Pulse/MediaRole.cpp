// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Pulse/MediaRole.h"

#include <QtGlobal>

namespace cadorel {

namespace {

/// What libpulse adds to the properties of each connection.
constexpr auto variable = "PULSE_PROP";

} // namespace

void declareMusic()
{
    const QByteArray given = qgetenv(variable);
    if (!given.contains("media.role"))
        qputenv(variable, given.isEmpty() ? "media.role=music" : given + " media.role=music");
}

} // namespace cadorel

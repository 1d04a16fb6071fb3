// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Pulse/MediaRole.h"

#include <QByteArray>

namespace cadorel {

namespace {

/// What libpulse adds to the properties of each connection.
constexpr auto variable = "PULSE_PROP";

} // namespace

void declareMusic()
{
    QByteArray properties = qgetenv(variable);
    const auto declare = [&properties](const QByteArray &name, const QByteArray &value) {
        if (!properties.contains(name))
            properties += (properties.isEmpty() ? "" : " ") + name + '=' + value;
    };
    declare("media.role", "music");
    declare("module-stream-restore.id", streamGroup);
    qputenv(variable, properties);
}

} // namespace cadorel

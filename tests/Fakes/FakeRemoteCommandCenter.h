// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/RemoteCommandCenter.h"

#include <QMetaMethod>

namespace cadorel {

/// Media keys that a test presses by emitting a command's signal.
class FakeRemoteCommandCenter : public RemoteCommandCenter
{
public:
    using RemoteCommandCenter::RemoteCommandCenter;

    /// Somebody listens to a command.
    template <typename Command>
    bool isHeard(Command command) const
    {
        return isSignalConnected(QMetaMethod::fromSignal(command));
    }
};

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/System.h"

namespace cadorel {

/// The Linux desktop. Main thread.
class LinuxSystem : public System
{
public:
    /// False too for a local file that does not exist: the desktop's programs would fail without a word.
    bool open(const QUrl &url) override;
    /// The processor's architecture, which is known everywhere and tells nothing about the owner.
    QString deviceModel() const override;
    /// PRETTY_NAME of /etc/os-release, or kernel and its version.
    QString systemVersion() const override;
    QString applicationVersion() const override;
};

} // namespace cadorel

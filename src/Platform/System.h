// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QUrl>

namespace cadorel {

/// What the player asks of the machine and the desktop. Main thread.
class System
{
public:
    virtual ~System() = default;

    /// Opens an address or a folder with the desktop's own program; false when there is none.
    virtual bool open(const QUrl &url) = 0;
    /// Kind of machine, for instance "x86_64".
    virtual QString deviceModel() const = 0;
    /// Name and version of the operating system.
    virtual QString systemVersion() const = 0;
    /// Version of the player.
    virtual QString applicationVersion() const = 0;
};

} // namespace cadorel

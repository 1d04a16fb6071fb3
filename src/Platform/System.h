// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

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

    /// Whether the desktop lets the player choose the icon that it is shown with.
    virtual bool supportsAlternateIcons() const = 0;
    /// The icon that was chosen; none is the default one. The system keeps it, also between runs.
    virtual std::optional<QString> alternateIconName() const = 0;
    /// Called once an icon is changed, or could not be: then with what went wrong.
    using IconCompletion = std::function<void(const std::optional<QString> &error)>;
    /// Shows the player with that icon from now on, none being the default one. @p completion comes on the
    /// main thread, before the call returns or later.
    virtual void setAlternateIconName(const std::optional<QString> &name, IconCompletion completion) = 0;
};

} // namespace cadorel

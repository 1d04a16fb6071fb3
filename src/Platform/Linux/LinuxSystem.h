// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/WindowIcon.h"
#include "Platform/System.h"

#include <optional>

namespace cadorel {

/// The Linux desktop. Main thread.
class LinuxSystem : public System
{
public:
    /// The choice of an icon is kept in that directory. Where windows have icons of their own, the chosen one
    /// is that of every window from now on; needs the application object.
    explicit LinuxSystem(const QString &applicationSupport);

    /// False too for a local file that does not exist: the desktop's programs would fail without a word.
    bool open(const QUrl &url) override;
    /// The processor's architecture, which is known everywhere and tells nothing about the owner.
    QString deviceModel() const override;
    /// PRETTY_NAME of /etc/os-release, or kernel and its version.
    QString systemVersion() const override;
    QString applicationVersion() const override;

    /// Under X11 a window brings its icon. Elsewhere it is that of the desktop entry, which is not ours to
    /// change.
    bool supportsAlternateIcons() const override { return m_icon.has_value(); }
    std::optional<QString> alternateIconName() const override;
    void setAlternateIconName(const std::optional<QString> &name, IconCompletion completion) override;

private:
    std::optional<WindowIcon> m_icon;
};

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FilePicker.h"

#include <QDBusConnection>

#include <chrono>
#include <functional>

namespace cadorel {

/// The desktop's file dialog through org.freedesktop.portal.FileChooser. Nothing is picked (not an empty
/// list) where there is no session bus, where no portal answers within the limit or knows the interface,
/// where the portal refuses, and where it goes away while the dialog is open. Main thread.
class PortalFilePicker : public FilePicker
{
public:
    /// How long a portal, which the bus may have to start first, is waited for.
    static constexpr std::chrono::milliseconds defaultLimit{2000};

    /// @p bus gives the bus of the session; it is asked at each pick, the first time then.
    explicit PortalFilePicker(std::function<QDBusConnection()> bus = QDBusConnection::sessionBus,
                              std::chrono::milliseconds limit = defaultLimit);

    QCoro::Task<std::optional<QList<QUrl>>> pick(Request request) override;

private:
    std::function<QDBusConnection()> m_bus;
    std::chrono::milliseconds m_limit;
};

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

namespace cadorel {

struct Platform;

/// Names the machine that the shared instances of this process are built on; main() calls it once, before the
/// first of them is used. Main thread.
void setProcessPlatform(Platform *platform);
/// That machine.
Platform &processPlatform();

/// Releases every shared instance, the last built first. main() calls it after its event loop has ended,
/// while the platform still stands. Main thread.
void releaseSharedServices();

namespace detail {
void onRelease(const char *name, std::function<void()> release);
}

/// The one instance of a service, made by @p make at first use. Main thread.
template <typename Service, typename Make>
Service &sharedService(Make make)
{
    static std::unique_ptr<Service> instance;
    if (!instance) {
        instance = make();
        detail::onRelease(Service::staticMetaObject.className(), [] { instance.reset(); });
    }
    return *instance;
}

} // namespace cadorel

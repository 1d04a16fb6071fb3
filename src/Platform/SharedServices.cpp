// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/SharedServices.h"

#include <QLoggingCategory>

#include <vector>

namespace cadorel {

namespace {

Q_LOGGING_CATEGORY(sharedLog, "cadorel.platform.shared", QtWarningMsg)

Platform *currentPlatform = nullptr;

std::vector<std::function<void()>> &releases()
{
    static std::vector<std::function<void()>> list;
    return list;
}

} // namespace

void setProcessPlatform(Platform *platform)
{
    currentPlatform = platform;
}

Platform &processPlatform()
{
    Q_ASSERT(currentPlatform);
    return *currentPlatform;
}

void releaseSharedServices()
{
    while (!releases().empty()) {
        const std::function<void()> release = std::move(releases().back());
        releases().pop_back();
        release();
    }
}

void detail::onRelease(const char *name, std::function<void()> release)
{
    qCDebug(sharedLog) << "made" << name;
    releases().push_back(std::move(release));
}

} // namespace cadorel

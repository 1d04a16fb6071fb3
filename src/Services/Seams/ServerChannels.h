// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoroTask>

namespace cadorel {

/// Records of use that are sent to the makers. Main thread; fails quietly.
class UsageLog
{
public:
    virtual ~UsageLog() = default;

    virtual void logAppLaunch() = 0;
    virtual void logAppBackground() = 0;
};

/// Asks whether a newer version is out. Main thread; fails quietly.
class UpdateCheck
{
public:
    virtual ~UpdateCheck() = default;

    virtual QCoro::Task<void> checkForUpdates(bool forceShowPopup) = 0;
    virtual bool isForceUpdateRequired() const = 0;
};

/// Asks for the makers' announcements. Main thread; fails quietly.
class AnnouncementCheck
{
public:
    virtual ~AnnouncementCheck() = default;

    virtual QCoro::Task<void> checkAnnouncements() = 0;
};

} // namespace cadorel

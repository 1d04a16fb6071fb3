// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/NowPlayingInfo.h"

namespace cadorel {

/// Where the desktop reads what plays. Main thread. Publishing is called several times a second, so it is
/// cheap, and says nothing to the desktop when nothing but the running position has changed.
class NowPlayingCenter
{
public:
    virtual ~NowPlayingCenter() = default;

    /// What was published last.
    virtual const NowPlayingInfo &nowPlayingInfo() const = 0;
    virtual void setNowPlayingInfo(const NowPlayingInfo &info) = 0;
    virtual void setPlaybackControls(const PlaybackControls &controls) = 0;
};

} // namespace cadorel

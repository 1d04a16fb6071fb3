// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/NowPlayingCenter.h"

#include <QList>

namespace cadorel {

/// A desktop that remembers what it was told.
class FakeNowPlayingCenter : public NowPlayingCenter
{
public:
    /// How often the information was published.
    int publications = 0;
    /// What was told of the controls, in order.
    QList<PlaybackControls> controls;

    const NowPlayingInfo &nowPlayingInfo() const override { return m_info; }
    void setNowPlayingInfo(const NowPlayingInfo &info) override
    {
        ++publications;
        m_info = info;
    }
    void setPlaybackControls(const PlaybackControls &told) override { controls.append(told); }

    /// How the controls stand now.
    PlaybackControls lastControls() const
    {
        return controls.isEmpty() ? PlaybackControls() : controls.constLast();
    }

private:
    NowPlayingInfo m_info;
};

} // namespace cadorel

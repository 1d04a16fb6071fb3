// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/NowPlayingCenter.h"

#include <QList>

#include <functional>

namespace cadorel {

/// A desktop that remembers what it was told.
class FakeNowPlayingCenter : public NowPlayingCenter
{
public:
    /// How often the information was published.
    int publications = 0;
    /// Called with everything that is published.
    std::function<void(const NowPlayingInfo &info)> onPublished;
    /// What was told of the controls, in order.
    QList<PlaybackControls> controls;

    const NowPlayingInfo &nowPlayingInfo() const override { return m_info; }
    void setNowPlayingInfo(const NowPlayingInfo &info) override
    {
        ++publications;
        m_info = info;
        if (onPublished)
            onPublished(m_info);
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

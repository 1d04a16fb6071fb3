// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/PlaybackPosition.h"

#include "Platform/Clock.h"
#include "Services/AudioPlayerService.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace cadorel {

namespace {

constexpr double msPerSecond = 1000;
/// A little longer than between two words of the player.
constexpr double longestWaitMs = 300;
/// What the player tells may be off by this much from what the clock says; more is a jump.
constexpr double accuracyMs = 100;

/// To the nearest one: a position that was sought to is that position, whatever a fraction of a second makes
/// of it.
int inMilliseconds(double seconds)
{
    constexpr double most = std::numeric_limits<int>::max();
    const double ms = std::round(seconds * msPerSecond);
    return std::isfinite(ms) ? static_cast<int>(std::clamp(ms, 0.0, most)) : 0;
}

} // namespace

PlaybackPosition::PlaybackPosition(AudioPlayerService &player, Clock &clock)
    : m_player(player)
    , m_clock(clock)
    , m_milliseconds(inMilliseconds(player.currentTime()))
{
    connect(&player, &AudioPlayerService::currentTimeChanged, this, &PlaybackPosition::timeTold);
    connect(&player, &AudioPlayerService::isPlayingChanged, this, &PlaybackPosition::isPlayingChanged);
}

PlaybackPosition::~PlaybackPosition() = default;

double PlaybackPosition::estimate() const
{
    if (!m_anchor)
        return m_milliseconds;
    const std::chrono::duration<double, std::milli> passed = m_clock.monotonic() - m_anchor->at;
    return m_anchor->milliseconds + passed.count();
}

void PlaybackPosition::timeTold()
{
    const int told = inMilliseconds(m_player.currentTime());
    const bool playsOn = m_player.isPlaying() && m_anchor && std::abs(told - estimate()) <= accuracyMs;
    m_milliseconds = playsOn ? std::max(told, m_milliseconds) : told;
    // At its beginning a song may be said to play before it sounds.
    if (m_player.isPlaying() && told > 0)
        m_anchor = {.milliseconds = told, .at = m_clock.monotonic()};
    else
        m_anchor.reset();
    m_timer.reset();
    Q_EMIT changed();
}

void PlaybackPosition::isPlayingChanged()
{
    // From where it plays on, the player will tell.
    m_anchor.reset();
    m_timer.reset();
}

void PlaybackPosition::waitFor(std::optional<int> milliseconds)
{
    m_timer.reset();
    if (!milliseconds || !m_anchor || *milliseconds <= m_milliseconds)
        return;
    const double left = std::max(0.0, *milliseconds - estimate());
    if (left > longestWaitMs)
        return;
    m_timer = m_clock.singleShot(std::chrono::milliseconds(static_cast<int>(std::ceil(left))),
                                 [this, awaited = *milliseconds] { reached(awaited); });
}

void PlaybackPosition::reached(int milliseconds)
{
    m_milliseconds = milliseconds;
    Q_EMIT changed();
}

} // namespace cadorel

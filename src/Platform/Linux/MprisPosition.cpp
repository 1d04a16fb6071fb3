// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MprisPosition.h"

#include "Platform/Clock.h"
#include "Platform/NowPlayingInfo.h"

#include <algorithm>
#include <cmath>

namespace cadorel {

namespace {

/// A jump that was asked for and has not come by then does not come.
constexpr std::chrono::seconds targetLimit{5};

double finite(double value)
{
    return std::isfinite(value) ? std::max(value, 0.0) : 0.0;
}

} // namespace

double MprisPosition::Reading::at(std::chrono::nanoseconds moment) const
{
    return position + (std::chrono::duration<double>(moment - time).count() * rate);
}

MprisPosition::MprisPosition(const Clock &clock)
    : m_clock(clock)
{
}

double MprisPosition::bounded(double position) const
{
    return m_length > 0 ? std::min(position, m_length) : position;
}

bool MprisPosition::take(const NowPlayingInfo &info)
{
    const std::chrono::nanoseconds moment = m_clock.monotonic();
    const double told = finite(info.elapsedPlaybackTime);
    const double rate = finite(info.playbackRate);
    const double computed = bounded(m_reading.at(moment));
    const bool isSameSong = info.songId == m_songId;
    const bool isSameRate = rate == m_reading.rate;
    m_length = finite(info.playbackDuration);

    if (!isSameSong) {
        // Of a new song everybody expects the beginning.
        m_songId = info.songId;
        m_target.reset();
        m_told = told;
        m_reading = {.position = told, .time = moment, .rate = rate};
        const bool isElsewhere = told > (rate == 0 ? toleranceAtRest : tolerance);
        m_belief = {.position = isElsewhere ? told : 0, .time = moment, .rate = rate};
        return isElsewhere;
    }

    const double limit = m_reading.rate == 0 && isSameRate ? toleranceAtRest : tolerance;
    const bool isNew = told != m_told || !isSameRate;
    const bool isOff = std::abs(told - bounded(m_belief.at(moment))) > limit;
    // The same figure again is mostly the last one told for another reason, unless the song has stopped.
    if (!isNew && !isOff)
        return false;
    const bool isAsked = hasLanded(told, computed, moment);
    const bool hasJumped = isAsked || isOff || std::abs(told - computed) > limit;
    m_told = told;
    m_reading = {.position = told, .time = moment, .rate = rate};
    // Who hears of play and pause takes that as an occasion to look.
    if (hasJumped || !isSameRate)
        m_belief = m_reading;
    return hasJumped;
}

bool MprisPosition::hasLanded(double position, double expected, std::chrono::nanoseconds moment)
{
    if (!m_target)
        return false;
    const bool isLate = moment - m_targetSince > targetLimit;
    const bool isNearer = std::abs(position - *m_target) <= std::abs(position - expected);
    if (isNearer || isLate)
        m_target.reset();
    return isNearer && !isLate;
}

void MprisPosition::expect(double position)
{
    m_target = position;
    m_targetSince = m_clock.monotonic();
}

std::chrono::microseconds MprisPosition::now() const
{
    const std::chrono::nanoseconds moment = std::min(m_clock.monotonic(), m_reading.time + longestSilence);
    const std::chrono::duration<double> position(bounded(m_reading.at(moment)));
    return std::chrono::round<std::chrono::microseconds>(position);
}

} // namespace cadorel

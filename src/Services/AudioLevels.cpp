// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AudioLevels.h"

#include "Platform/Random.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace cadorel {

namespace {

constexpr std::chrono::milliseconds tickInterval{80};
constexpr double beatStep = 0.06; // of the beat's phase, per tick

constexpr qreal initialLevel = 0.3;
constexpr qreal restLevel = 0.1; // below what a moving bar can reach
constexpr double lowestLevel = 0.15;
constexpr double highestLevel = 1.0;
constexpr double middleLevel = 0.45;
constexpr double noiseRange = 0.12;

/// The waves, the beat's share and the noise of one bar.
double wavingLevel(int bar, double seconds, double beatPhase, double noise)
{
    const double frequency = (bar + 1) * 1.8;
    const double phase = bar * 0.5;
    const double wave = std::sin(seconds * frequency + phase) * 0.25;
    const double beat = std::sin(beatPhase * (1.2 + bar * 0.25)) * 0.35;
    const double slowWave = std::cos(seconds * frequency * 0.5 + phase * 2) * 0.15;
    return middleLevel + wave + beat + slowWave + noise;
}

/// A short rise now and then, the more often the lower the bar's tone.
double peak(int bar, double seconds)
{
    return static_cast<qint64>(seconds * 12) % (12 + 2 * bar) == 0 ? 0.35 : 0;
}

/// A rise of every third bar, four times a second in the order of seven beats.
double accent(int bar, double seconds)
{
    return static_cast<qint64>(seconds * 4) % 7 == bar % 3 ? 0.2 : 0;
}

} // namespace

AudioLevels::AudioLevels(Clock &clock, Random &random, std::function<bool()> isPlaying)
    : m_clock(clock)
    , m_random(random)
    , m_isPlaying(std::move(isPlaying))
    , m_audioLevels(barCount, initialLevel)
{
}

AudioLevels::~AudioLevels() = default;

void AudioLevels::startAudioLevelSimulation()
{
    stopAudioLevelSimulation();
    m_levelTimer = m_clock.repeating(tickInterval, [this] { updateAudioLevels(); });
}

void AudioLevels::stopAudioLevelSimulation()
{
    m_levelTimer.reset();
    publish(QList<qreal>(barCount, restLevel));
}

void AudioLevels::updateAudioLevels()
{
    if (!m_isPlaying()) {
        stopAudioLevelSimulation();
        return;
    }
    const double seconds = std::chrono::duration<double>(m_clock.monotonic()).count();
    m_beatPhase += beatStep;
    QList<qreal> levels;
    levels.reserve(barCount);
    for (int bar = 0; bar < barCount; ++bar) {
        const double noise = m_random.real(-noiseRange, noiseRange);
        const double level =
            wavingLevel(bar, seconds, m_beatPhase, noise) + peak(bar, seconds) + accent(bar, seconds);
        levels.append(std::clamp(level, lowestLevel, highestLevel));
    }
    publish(levels);
}

void AudioLevels::publish(const QList<qreal> &levels)
{
    if (m_audioLevels == levels)
        return;
    m_audioLevels = levels;
    Q_EMIT audioLevelsChanged();
}

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Clock.h"

#include <QList>
#include <QObject>

#include <functional>
#include <memory>

namespace cadorel {

class Random;

/// Seven level bars that move like music. Nothing listens to the sound: waves of the clock, a beat and noise
/// stand for it. No timer runs but between start and stop. Main thread.
class AudioLevels : public QObject
{
    Q_OBJECT
public:
    static constexpr int barCount = 7;

    /// @param clock and @param random outlive this object
    /// @param isPlaying asked at every tick; the bars come to rest once it says no
    AudioLevels(Clock &clock, Random &random, std::function<bool()> isPlaying);
    ~AudioLevels() override;
    Q_DISABLE_COPY_MOVE(AudioLevels)

    /// Heights, 0.15...1 while they move; 0.3 before the first start, 0.1 after a stop.
    const QList<qreal> &audioLevels() const { return m_audioLevels; }
    /// Grows with every tick and is never set back, so that bars do not repeat themselves after a pause.
    double beatPhase() const { return m_beatPhase; }
    /// Reserved for effects that follow the beat: 0.
    double lastBeatTime() const { return m_lastBeatTime; }
    bool isRunning() const { return m_levelTimer != nullptr; }

    /// Starts anew.
    void startAudioLevelSimulation();
    void stopAudioLevelSimulation();
    /// One tick.
    void updateAudioLevels();

Q_SIGNALS:
    void audioLevelsChanged();

private:
    void publish(const QList<qreal> &levels);

    Clock &m_clock;
    Random &m_random;
    std::function<bool()> m_isPlaying;
    std::unique_ptr<ClockTimer> m_levelTimer;
    QList<qreal> m_audioLevels;
    double m_beatPhase = 0;
    double m_lastBeatTime = 0;
};

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EqualizerEngine/AudioOutput.h"
#include "Platform/EqualizerEngine/DecodeRun.h"
#include "Platform/PlayerNode.h"

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace cadorel {

/// Decodes ahead on a thread and gives an AudioOutput what it pulls, through an effect and the volume. Its
/// clock is the output's own: it runs while silence is played, and stands while the output waits for a file
/// that cannot be read fast enough. Paused or stopped nothing wakes.
class StreamingPlayerNode : public PlayerNode
{
public:
    /// What the sound goes through.
    struct Effect
    {
        /// Changes sound in place; called for all that is played, on the output's thread.
        std::function<void(float *interleaved, qint64 frameCount)> process;
        /// What comes next has nothing to do with what was before. Not while process() runs.
        std::function<void()> reset;
    };

    explicit StreamingPlayerNode(Effect effect);
    /// The output is gone by then, or does not pull any more.
    ~StreamingPlayerNode() override;
    Q_DISABLE_COPY_MOVE(StreamingPlayerNode)

    /// The shape of everything that will be scheduled. Stops.
    void setFormat(const AudioFormat &format);
    const AudioFormat &format() const { return m_format; }
    /// Gives the output to play on, open and silent, or null before it goes. The place on the clock stays, so
    /// that a node goes on where a lost device left it; what that had not sounded yet is lost with it.
    void setOutput(AudioOutput *output);
    /// What the output is opened with.
    AudioOutput::Source source();

    void scheduleSegment(std::shared_ptr<AudioFile> file, qint64 startFrame, qint64 frameCount) override;
    void play() override;
    void pause() override;
    void stop() override;
    bool isPlaying() const override;
    void setVolume(float volume) override { m_volume = volume; }
    std::optional<NodeTime> playerTime() const override;

private:
    /// The way of a decoding thread to the output, which may go while the thread still reads.
    struct Waker
    {
        std::mutex mutex;
        AudioOutput *output = nullptr;
    };

    qint64 render(float *interleaved, qint64 frameCount);
    void applyGain(float *interleaved, qint64 frameCount);
    void beginRun();
    std::shared_ptr<std::mutex> exclusiveUseOf(const std::shared_ptr<AudioFile> &file);
    AudioOutput *usableOutput() const;

    const Effect m_effect;
    const std::shared_ptr<Waker> m_waker = std::make_shared<Waker>();
    AudioFormat m_format;
    AudioOutput *m_output = nullptr;
    std::shared_ptr<DecodeRun> m_run;
    /// Threads that were told to end and may still be reading.
    std::vector<std::shared_ptr<DecodeRun>> m_leaving;
    std::map<std::weak_ptr<AudioFile>, std::shared_ptr<std::mutex>, std::owner_less<>> m_exclusiveUse;
    bool m_isPlaying = false;
    bool m_hasStarted = false;
    /// Frames that the outputs before this one were given since stop().
    double m_clockBase = 0;

    std::atomic<float> m_volume = 1;
    /// The output's thread while it pulls, the main thread while it does not.
    double m_gain = 1;  ///< the volume reached
    double m_fade = 1;  ///< what begins in the middle of a sound fades in
    qint64 m_given = 0; ///< frames to this output since stop()
};

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AudioFile.h"
#include "Platform/EqualizerEngine/SampleRing.h"

#include <QtGlobal>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace cadorel {

/// What a node plays between two stops: segments, decoded ahead by a thread of the run's own into a ring. The
/// thread holds the run and its files itself, so that whoever drops the run never waits for a read that
/// hangs.
class DecodeRun : public std::enable_shared_from_this<DecodeRun>
{
public:
    /// A range of a file. `exclusive` is locked while the file is read: a run that was dropped may still be
    /// about to leave it.
    struct Segment
    {
        std::shared_ptr<AudioFile> file;
        std::shared_ptr<std::mutex> exclusive;
        qint64 startFrame = 0;
        qint64 frameCount = 0;
    };

    /// @param moreReady called on the run's thread when there is something again after take() gave too little
    DecodeRun(const AudioFormat &format, std::function<void()> moreReady);
    ~DecodeRun();
    Q_DISABLE_COPY_MOVE(DecodeRun)

    /// Main thread. The first one starts the thread.
    void append(Segment segment);
    /// Ends the thread as soon as its read returns, and lets go of the files. Main thread.
    void cancel();
    /// Waits for the end of the thread after cancel(). @return whether it has ended
    bool waitUntilEnded(std::chrono::milliseconds limit);

    /// Frames for the output: fewer than asked when the decoding is behind, and silence where nothing is
    /// scheduled. The output's thread.
    qint64 take(float *interleaved, qint64 frameCount);

private:
    void work();
    void play(const Segment &segment);
    bool waitForRoom(std::size_t samples);
    void offer();
    qint64 takeReady(float *interleaved, qint64 frameCount);
    void nudge();

    const AudioFormat m_format;
    const std::function<void()> m_moreReady;
    SampleRing m_ring;
    /// Frames that are scheduled and have not been taken.
    std::atomic<qint64> m_due = 0;
    /// take() gave too little.
    std::atomic<bool> m_isHungry = false;
    std::atomic<bool> m_isCancelled = false;
    /// Moves when the thread has reason to look again: a segment, room, the end.
    std::atomic<int> m_nudges = 0;
    std::mutex m_mutex; ///< for what follows
    std::condition_variable m_ended;
    std::deque<Segment> m_segments;
    bool m_hasThread = false;
};

} // namespace cadorel

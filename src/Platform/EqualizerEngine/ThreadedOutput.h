// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EqualizerEngine/AudioOutput.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace cadorel {

/// An output without a device: a thread that pulls when its heir says so. The heir's functions are called
/// with the lock held, and its destructor calls close().
class ThreadedOutput : public AudioOutput
{
public:
    ~ThreadedOutput() override;

    void open(const AudioFormat &format, Source source) override;
    bool isOpen() const override;
    void play() override;
    void pause() override;
    void drop() override;
    void wake() override;
    double framesHeard() const override;

    /// The device goes away, as when a sound server crashes.
    void breakDown();

protected:
    using Time = std::chrono::steady_clock::time_point;

    /// What to do next while it plays.
    struct Turn
    {
        qint64 frames = 0;         ///< pull so many, or
        std::optional<Time> until; ///< look again then, or when something changes
    };

    virtual Turn nextTurn() = 0;
    virtual void pulled(const float *interleaved, qint64 frameCount) = 0;
    virtual double heard() const = 0;
    /// Plays from now on, or is silent.
    virtual void playingChanged(bool plays) = 0;
    virtual void dropped() = 0;

    void close();
    /// Something changed that the next turn depends on; the lock is held.
    void lookAgain() { m_changed.notify_all(); }

    /// For everything here and in the heir: the thread, which would hold it most of the time, lets others go
    /// first.
    class Guard
    {
    public:
        explicit Guard(const ThreadedOutput &output);

    private:
        std::unique_lock<std::mutex> m_lock;
    };

    AudioFormat m_format;

private:
    void run();
    void setPlaying(bool plays);

    mutable std::mutex m_mutex;
    mutable std::atomic<int> m_waiting = 0; ///< who wants the lock besides the thread
    Source m_source;
    std::thread m_thread;
    std::condition_variable m_changed;
    bool m_isOpen = false;
    bool m_isClosing = false;
    bool m_plays = false;
    bool m_isHungry = false;
};

} // namespace cadorel

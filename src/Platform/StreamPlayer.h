// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/MediaAsset.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

#include <chrono>
#include <expected>
#include <functional>
#include <memory>
#include <optional>

namespace cadorel {

/// Length and start, in seconds, of what can be sought in an item.
struct SeekableRange
{
    double start = 0;
    double duration = 0;
    double end() const { return start + duration; }
};

/// One thing that a StreamPlayer plays. It is made by the player, plays at most in that one, and tells its
/// own state. Main thread.
class PlayerItem : public QObject
{
    Q_OBJECT
public:
    enum class Status { unknown, readyToPlay, failed };
    Q_ENUM(Status)

    using QObject::QObject;

    virtual const MediaAsset &asset() const = 0;
    virtual Status status() const = 0;
    /// Why the item failed, for a listener to read, without a credential; empty when unknown.
    virtual QString errorDescription() const = 0;
    /// Position in seconds; NaN while unknown.
    virtual double currentTime() const = 0;
    /// Length in seconds; NaN while unknown.
    virtual double duration() const = 0;
    /// Ticks a second of the asset's own clock (the sample rate of an audio file); 0 while unknown.
    virtual int timescale() const = 0;
    /// What can be sought now; nothing while unknown.
    virtual std::optional<SeekableRange> seekableRange() const = 0;
    /// Waits until the length is known. A failure is its description.
    virtual QCoro::Task<std::expected<double, QString>> loadDuration() = 0;

Q_SIGNALS:
    void statusChanged();
    /// The last sample has been handed to the sound device.
    void didPlayToEnd();
};

/// The engine that plays anything: files and streams. Main thread; nothing here blocks.
///
/// After an item's end the rate is 0 and the item stays; play() then starts it from where it was sought to,
/// or from its beginning.
class StreamPlayer : public QObject
{
    Q_OBJECT
public:
    enum class TimeControlStatus { paused, waitingToPlay, playing };
    Q_ENUM(TimeControlStatus)

    using QObject::QObject;

    /// An item for replaceCurrentItem(); it does not load before that.
    virtual std::shared_ptr<PlayerItem> makeItem(const MediaAsset &asset) = 0;
    /// Loads @p item in place of the current one, keeping the rate; null unloads.
    virtual void replaceCurrentItem(std::shared_ptr<PlayerItem> item) = 0;
    virtual std::shared_ptr<PlayerItem> currentItem() const = 0;

    virtual void play() = 0;
    virtual void pause() = 0;
    /// 1 from play() until pause() or the end of the item, else 0.
    virtual double rate() const = 0;
    /// `waitingToPlay` while the rate is 1 and a remote item loads or runs out of data.
    virtual TimeControlStatus timeControlStatus() const = 0;

    /// Amplitude factor, 0...1.
    virtual void setVolume(float volume) = 0;
    /// Whether playback waits for enough data rather than stutter.
    virtual void setAutomaticallyWaitsToMinimizeStalling(bool waits) = 0;

    /// Goes to @p time (seconds) in the current item; the result may lie off by the tolerances, 0 being
    /// exact.
    /// @param completion called later, once, with false when another seek, another item or a failure came
    /// between
    virtual void seek(double time, double toleranceBefore, double toleranceAfter,
                      std::function<void(bool finished)> completion) = 0;

    /// Calls @p callback with the position in seconds every @p interval of playing, and once after each
    /// start, stop and jump. No timer runs while the rate is 0.
    /// @return a key for removeTimeObserver()
    virtual int addPeriodicTimeObserver(std::chrono::milliseconds interval,
                                        std::function<void(double seconds)> callback) = 0;
    virtual void removeTimeObserver(int observer) = 0;

Q_SIGNALS:
    void timeControlStatusChanged();
    void rateChanged();
};

} // namespace cadorel

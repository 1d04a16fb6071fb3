// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AudioFile.h"

#include <QtGlobal>

#include <memory>
#include <optional>

namespace cadorel {

/// Where a node stands on its own clock, which begins with 0 at the first play() after stop().
struct NodeTime
{
    /// Frames that the listener has heard.
    double sampleTime = 0;
    /// Frames a second.
    double sampleRate = 0;
};

/// Plays ranges of decoded files. Main thread; decoding and output have threads of their own.
class PlayerNode
{
public:
    virtual ~PlayerNode() = default;

    /// Plays @p frameCount frames of @p file from @p startFrame on, after what is scheduled already. The file
    /// has the format that the engine is connected with.
    virtual void scheduleSegment(std::shared_ptr<AudioFile> file, qint64 startFrame, qint64 frameCount) = 0;
    /// Plays the whole file.
    virtual void scheduleFile(const std::shared_ptr<AudioFile> &file)
    {
        scheduleSegment(file, 0, file->length());
    }

    /// Starts or goes on. With nothing scheduled the node plays silence, and its clock runs.
    virtual void play() = 0;
    /// Falls silent at once and keeps its place.
    virtual void pause() = 0;
    /// Falls silent at once, drops everything that is scheduled and sets the clock back.
    virtual void stop() = 0;
    virtual bool isPlaying() const = 0;

    /// Amplitude factor, 0...1; heard at once, without a click.
    virtual void setVolume(float volume) = 0;

    /// The place on the node's clock of what is heard now, as the sound device tells it; held while paused.
    /// Nothing while stopped.
    virtual std::optional<NodeTime> playerTime() const = 0;
};

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AudioFile.h"

#include <QtGlobal>

#include <functional>

namespace cadorel {

/// Where the sound of the equalizer engine goes. It pulls what it plays, on a thread of its own. Every
/// function but wake() belongs to the main thread, and none waits for a device except open().
class AudioOutput
{
public:
    /// Fills @p interleaved, which has room for @p frameCount frames. @return how many there are; fewer than
    /// asked when the next are not ready yet: wake() tells of them
    using Source = std::function<qint64(float *interleaved, qint64 frameCount)>;

    AudioOutput() = default;
    /// The source is not called any more once it returns.
    virtual ~AudioOutput() = default;
    Q_DISABLE_COPY_MOVE(AudioOutput)

    /// Opens the device, silent until play(). Once only.
    /// @throws std::runtime_error, its text for a listener, within a second when there is none
    virtual void open(const AudioFormat &format, Source source) = 0;
    /// False before open() and for good once the device has gone away.
    virtual bool isOpen() const = 0;

    /// Sounds from here on; the source is called between this and the next pause() or drop(), and at no other
    /// time.
    virtual void play() = 0;
    /// Falls silent at once. What was pulled and not heard yet is heard after the next play().
    virtual void pause() = 0;
    /// Falls silent at once, forgets what was pulled and not heard, and counts from 0 again.
    virtual void drop() = 0;
    /// The source has more after it had too little. Any thread.
    virtual void wake() = 0;

    /// Frames of the source that have left the device since open() or drop(). Never runs backwards, stands
    /// while there is nothing to hear, and holds its last value when the device has gone.
    virtual double framesHeard() const = 0;
};

} // namespace cadorel

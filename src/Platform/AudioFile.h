// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QUrl>

namespace cadorel {

/// The shape of decoded sound: interleaved 32-bit floats, full scale being -1...1. The channels stand in the
/// order that FLAC gives to their number (RFC 9639, section 9.1.3).
struct AudioFormat
{
    /// Frames a second.
    int sampleRate = 0;
    int channelCount = 0;

    friend bool operator==(const AudioFormat &, const AudioFormat &) = default;
};

/// A local file opened for reading as decoded sound. Made and asked for its shape on the main thread; seek()
/// and read() belong to one thread at a time, the one that plays it.
class AudioFile
{
public:
    virtual ~AudioFile() = default;

    virtual const QUrl &url() const = 0;
    /// What read() gives: the file's own rate and channels.
    virtual AudioFormat processingFormat() const = 0;
    /// Exact length in frames.
    virtual qint64 length() const = 0;

    /// The next read() begins with exactly this frame; at or past the end it gives nothing.
    virtual void seek(qint64 frame) = 0;
    /// Decodes the next frames into @p interleaved, which has room for @p frameCount of them.
    /// @return how many there are; fewer than asked only at the end or where the file is damaged, then 0
    virtual qint64 read(float *interleaved, qint64 frameCount) = 0;
};

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/Tags/FileBytes.h"

#include <optional>

namespace cadorel {

/// The two streams that are nothing but frames one after the other.
enum class FrameKind { mpegAudio, adts };

/// What the header of one frame tells.
struct FrameHeader
{
    int bytes = 0;
    int samples = 0;
    int sampleRate = 0;
    /// Bits of the header that every frame of one stream shares.
    quint32 streamBits = 0;
};

/// Finds and counts the frames of MPEG audio (ISO 11172-3, 13818-3) and of AAC in ADTS (ISO 13818-7).
class MpegFrames
{
public:
    /// Parses the header at @p at; needs headerBytes bytes. @return nothing when there is none
    static std::optional<FrameHeader> parse(FrameKind kind, const char *at);
    static constexpr int headerBytes = 7;

    /// @param end offset behind the last frame: where the tags at the file's end begin
    MpegFrames(FileBytes &file, FrameKind kind, qint64 end);

    /// Offset of the first frame at or after @p from, at most a mebibyte on. Bytes that merely look like a
    /// header are passed over: a frame counts when others follow it.
    std::optional<qint64> first(qint64 from);
    /// Whether the first frame is exactly at @p offset.
    bool startsAt(qint64 offset) { return isChain(offset, true); }
    /// The frame at @p offset.
    std::optional<FrameHeader> at(qint64 offset);
    /// The next whole frame of the stream at or after @p offset, which moves there. Damaged stretches are
    /// skipped. @param streamBits those of the stream; nothing accepts any frame
    std::optional<FrameHeader> next(qint64 &offset, std::optional<quint32> streamBits);
    /// Length in seconds of the frames from @p from to the end, each of them read. Damaged stretches are
    /// skipped.
    double count(qint64 from);
    /// The same, worked out from the first frames.
    double estimate(qint64 from);

private:
    struct Walk
    {
        double seconds = 0;
        qint64 bytes = 0;
        qint64 frames = 0;
    };

    bool isChain(qint64 offset, bool certain);
    Walk walk(qint64 from, qint64 end);

    FileBytes &m_file;
    FrameKind m_kind;
    qint64 m_end;
};

} // namespace cadorel

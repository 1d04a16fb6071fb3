// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/Tags/MpegFrames.h"

#include <optional>

namespace cadorel {

/// What an encoder tells of a whole MP3 file in its first frame, which holds no sound: "Xing" and "Info" with
/// LAME's extension, and "VBRI".
struct XingHeader
{
    /// Frames of sound, and bytes with this frame; 0 where not told.
    qint64 frames = 0;
    qint64 bytes = 0;
    /// Samples that the encoder put before and behind the song, without the decoder's own delay.
    struct Gaps
    {
        int delay = 0;
        int padding = 0;
    };
    std::optional<Gaps> gaps;

    /// @param offset of the first frame @return nothing when that is an ordinary one
    static std::optional<XingHeader> of(FileBytes &file, qint64 offset, const FrameHeader &frame);
};

} // namespace cadorel

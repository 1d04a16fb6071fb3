// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/Tags/IffChunks.h"

#include <optional>

namespace cadorel {

/// A stretch of a file.
struct ByteRange
{
    qint64 offset = 0;
    qint64 length = 0;
};

/// What a file of one-bit sound tells: DSF (Sony, DSF File Format 1.01) and DSDIFF (Philips,
/// DSDIFF 1.5). TagLib reads neither.
struct DsdChunks
{
    /// Seconds; 0 when the file does not tell.
    double duration = 0;
    /// The ID3v2 tag, when there is one.
    std::optional<ByteRange> id3;
    /// The texts of DSDIFF's own title and artist chunks, in no declared encoding.
    ChunkTexts texts;

    /// @return nothing when the file is damaged
    static std::optional<DsdChunks> ofDsf(FileBytes &file);
    static std::optional<DsdChunks> ofDff(FileBytes &file);
};

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/Tags/FileBytes.h"

namespace cadorel {

/// What a file is, whatever its name says.
enum class AudioContainer {
    unknown,
    mpegAudio,
    adts,
    flac,
    oggVorbis,
    oggFlac,
    opus,
    speex,
    mp4,
    wav,
    aiff,
    asf,
    monkeysAudio,
    wavPack,
    trueAudio,
    tak,
    dsf,
    dff,
    matroska,
    realMedia,
};

/// A file's container, told by its first bytes.
struct AudioSignature
{
    AudioContainer container = AudioContainer::unknown;
    /// Whether the file begins with an ID3v2 tag.
    bool hasId3v2 = false;
    /// Offset of the audio: behind the ID3v2 tags at the beginning; for streams of frames, of the first
    /// frame.
    qint64 audioStart = 0;
    /// Offset behind the audio: of the tags at the end of a stream of frames; else the file's length.
    qint64 audioEnd = 0;
    /// Offset of an ID3v1 tag and of an APE tag's footer at the end; -1 without.
    qint64 id3v1 = -1;
    qint64 apeFooter = -1;

    /// Looks at the beginning and the end of the file; reads a few kilobytes, at most a mebibyte.
    static AudioSignature of(FileBytes &file);
};

} // namespace cadorel

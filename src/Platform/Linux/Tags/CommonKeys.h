// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AssetReader.h"

namespace cadorel {

/// What a field of any format is for.
enum class FieldRole {
    other,
    title,
    artist,
    albumArtist,
    composer,
    album,
    track,
    lyrics,
    lyricist,
    artwork,
    /// A value that programs write for programs: loudness, database numbers.
    machine,
};

/// The one table of the names that the formats give to their fields.
class CommonKeys
{
public:
    struct Field
    {
        FieldRole role = FieldRole::other;
        /// Place in a list whose format keeps no order of its own.
        int rank = 0;
    };

    /// Looks up a frame, an atom or a field name, in any case of letters.
    static Field field(const QString &name);
    /// Looks up a field whose name somebody made up (TXXX, "----", COMM): only lyrics are trusted there.
    static Field freeField(const QString &name);
    /// The common key of a role; album artists and track numbers have none.
    static std::optional<CommonKey> commonKey(FieldRole role);
    /// The name for the identifier of a field: the format's own, but where a format names its fields in words
    /// ("TRACKNUMBER", "ALBUMARTIST", "REPLAYGAIN_ALBUM_GAIN") the short name that other formats have for it.
    /// Readers of identifiers look for parts of frame and atom names ("trkn", "alb", "lyr"): in words they
    /// would miss the track number, and take an album artist or a loudness for the album and a lyricist for
    /// lyrics.
    static QString identifierName(const QString &name, FieldRole role);
};

} // namespace cadorel

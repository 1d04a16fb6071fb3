// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Playlist.h"

#include <QByteArray>
#include <QHash>
#include <QList>

namespace cadorel {

/// Makes the stored text of all playlists, one JSON array. What it made of a playlist is kept until that one
/// changes, so that a tapped heart does not encode all covers anew. One thread at a time.
class PlaylistEncoder
{
public:
    /// @throws EncodingError when a value of some playlist has no JSON form
    QByteArray encode(const QList<Playlist> &playlists);

private:
    struct Encoded
    {
        /// Shares its lists and bytes with the playlist for as long as those do not change.
        Playlist playlist;
        QByteArray text;
    };
    QHash<QString, Encoded> m_encoded;
};

} // namespace cadorel

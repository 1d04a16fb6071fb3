// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Playlists/PlaylistEncoder.h"

#include "Utils/JsonWriter.h"

namespace cadorel {

namespace {

template <typename Container>
bool shares(const Container &a, const Container &b)
{
    return a.constData() == b.constData() && a.size() == b.size();
}

/// Whether nothing at all differs; equal contents in different places count as a difference.
bool isUnchanged(const Playlist &a, const Playlist &b)
{
    const bool sharesCover = a.coverImageData && b.coverImageData
                                 ? shares(*a.coverImageData, *b.coverImageData)
                                 : a.coverImageData.has_value() == b.coverImageData.has_value();
    return sharesCover && shares(a.songIds, b.songIds) && shares(a.onlineSongs, b.onlineSongs) &&
           a.name == b.name && a.description == b.description && a.type == b.type &&
           a.coverURL == b.coverURL && a.createdAt == b.createdAt && a.updatedAt == b.updatedAt;
}

} // namespace

QByteArray PlaylistEncoder::encode(const QList<Playlist> &playlists)
{
    QHash<QString, Encoded> encoded;
    encoded.reserve(playlists.size());
    QList<QByteArray> texts;
    texts.reserve(playlists.size());
    for (const Playlist &playlist : playlists) {
        Encoded known = m_encoded.take(playlist.id);
        if (known.text.isEmpty() || !isUnchanged(known.playlist, playlist)) {
            JsonWriter writer;
            playlist.writeJson(writer);
            known = {.playlist = playlist, .text = writer.take()};
        }
        texts.append(known.text);
        encoded.insert(playlist.id, known);
    }
    m_encoded = encoded;
    return '[' + texts.join(',') + ']';
}

} // namespace cadorel

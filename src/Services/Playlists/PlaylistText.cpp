// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Playlists/PlaylistText.h"

#include "Models/DecodingError.h"
#include "Utils/JsonWriter.h"

#include <QJsonArray>
#include <QJsonDocument>

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

QByteArray PlaylistText::encode(const QList<Playlist> &playlists)
{
    QHash<QString, Encoded> encoded;
    QList<QByteArray> texts;
    texts.reserve(playlists.size());
    for (const Playlist &playlist : playlists) {
        Encoded known = m_encoded.value(playlist.id);
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

QList<Playlist> PlaylistText::decode(const QByteArray &text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (!document.isArray())
        throw DecodingError(error.errorString());
    QList<Playlist> playlists;
    for (const auto &element : document.array()) {
        if (!element.isObject())
            throw DecodingError(QStringLiteral("playlist"));
        playlists.append(Playlist::fromJson(element.toObject()));
    }
    return playlists;
}

} // namespace cadorel

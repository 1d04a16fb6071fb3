// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/OnlineSong.h"

#include <QByteArray>
#include <QDateTime>
#include <QImage>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QUuid>

#include <optional>

namespace cadorel {

class JsonWriter;

/// Which form of song a playlist holds: ids of the listener's own songs, or whole online records.
enum class PlaylistType { local, online };

/// The text that stands for the type in JSON.
QString rawValue(PlaylistType type);
/// The type of such a text, compared with case; nothing for another.
std::optional<PlaylistType> playlistType(const QString &rawValue);
/// The word that a listener reads: "本地" or "在线".
QString displayName(PlaylistType type);

/// The listener's named list of songs. Equality and hashing use `id` alone; what must notice a new name or
/// cover compares `uiIdentity`. A value type; any thread.
struct Playlist
{
    QString id = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    QString name;
    QString description;
    PlaylistType type = PlaylistType::local;
    std::optional<QUrl> coverURL;
    std::optional<QByteArray> coverImageData; ///< JPEG, about 300 pixels at its shorter side
    QDateTime createdAt = QDateTime::currentDateTimeUtc();
    QDateTime updatedAt = QDateTime::currentDateTimeUtc();
    QStringList songIds;           ///< of a local playlist; may name songs that no longer exist
    QList<OnlineSong> onlineSongs; ///< of an online playlist

    /// Decoded at each call; nothing when there is none or it does not decode.
    std::optional<QImage> coverImage() const;
    /// Songs of the playlist's own type, also those that no longer exist.
    int songCount() const;
    /// Changes whenever a row that shows the playlist has to be drawn anew.
    QString uiIdentity() const;

    /// Writes the record as one JSON object. @throws EncodingError when a date is none
    void writeJson(JsonWriter &writer) const;

    friend bool operator==(const Playlist &a, const Playlist &b) { return a.id == b.id; }
    friend size_t qHash(const Playlist &playlist, size_t seed = 0) { return qHash(playlist.id, seed); }
};

} // namespace cadorel

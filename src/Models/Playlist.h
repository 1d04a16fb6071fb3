// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/OnlineSong.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QUuid>

#include <optional>

namespace cadorel {

/// Which form of song a playlist holds: ids of the listener's own songs, or whole online records.
enum class PlaylistType { local, online };

/// The listener's named list of songs. Equality uses `id` alone.
struct Playlist
{
    QString id = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    QString name;
    QString description;
    PlaylistType type = PlaylistType::local;
    std::optional<QUrl> coverURL;
    std::optional<QByteArray> coverImageData;
    QDateTime createdAt = QDateTime::currentDateTimeUtc();
    QDateTime updatedAt = QDateTime::currentDateTimeUtc();
    QStringList songIds;           ///< of a local playlist; may name songs that no longer exist
    QList<OnlineSong> onlineSongs; ///< of an online playlist

    friend bool operator==(const Playlist &a, const Playlist &b) { return a.id == b.id; }
};

} // namespace cadorel

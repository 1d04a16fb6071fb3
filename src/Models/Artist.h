// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/ArtworkImage.h"
#include "Models/MediaItem.h"

#include <QList>
#include <QSize>
#include <QString>

#include <memory>

namespace cadorel {

/// One artist, rebuilt from the songs whenever a screen asks and never stored: an id built from a hash holds
/// for one run only. Equality and hashing use `id` alone. Any thread.
struct Artist
{
    QString id;
    QString name;
    int songCount = 0;
    int albumCount = 0; ///< number of distinct albums
    /// Cover held by the system's media library.
    std::shared_ptr<const MediaItemArtwork> artwork;
    /// Cover of one of the songs, or one already decoded.
    ArtworkImage artworkImage;

    /// The artist of a collection of the system's media library.
    static Artist fromCollection(const MediaItemCollection &collection, int albumCount);

    /// The picture to show at @p size (points): `artworkImage` first, then `artwork`; nothing when neither
    /// draws.
    std::optional<QImage> getArtworkImage(QSize size = QSize(120, 120)) const;

    /// Sample values for trying a screen without a library.
    static Artist example();
    static QList<Artist> examples();

    friend bool operator==(const Artist &a, const Artist &b) { return a.id == b.id; }
    friend size_t qHash(const Artist &record, size_t seed = 0) { return qHash(record.id, seed); }
};

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/ArtworkImage.h"
#include "Models/MediaItem.h"

#include <QList>
#include <QSize>
#include <QString>

#include <memory>

namespace cadorel {

/// One album, rebuilt from its songs whenever a screen asks and never stored: an id built from a hash holds
/// for one run only. Equality and hashing use `id` alone. Any thread.
struct Album
{
    QString id;
    QString name;
    QString artist;
    int songCount = 0;
    int year = 0; ///< release year, 0 when unknown
    /// Cover held by the system's media library.
    std::shared_ptr<const MediaItemArtwork> artwork;
    /// Cover of one of the songs, or one already decoded.
    ArtworkImage artworkImage;

    /// The album of a collection of the system's media library.
    static Album fromCollection(const MediaItemCollection &collection);

    /// The picture to show at @p size (points): `artworkImage` first, then `artwork`; nothing when neither
    /// draws.
    std::optional<QImage> getArtworkImage(QSize size = QSize(180, 180)) const;

    /// Sample values for trying a screen without a library.
    static Album example();
    static QList<Album> examples();

    friend bool operator==(const Album &a, const Album &b) { return a.id == b.id; }
    friend size_t qHash(const Album &record, size_t seed = 0) { return qHash(record.id, seed); }
};

} // namespace cadorel

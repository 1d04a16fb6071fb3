// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/Artist.h"

namespace cadorel {

using namespace Qt::StringLiterals;

Artist Artist::fromCollection(const MediaItemCollection &collection, int albumCount)
{
    const MediaItem item = collection.representativeItem.value_or(MediaItem{});
    Artist artist;
    artist.id = QString::number(item.artistPersistentID);
    artist.name = item.artist.value_or(u"未知艺术家"_s);
    artist.songCount = collection.count;
    artist.albumCount = albumCount;
    artist.artwork = item.artwork;
    return artist;
}

std::optional<QImage> Artist::getArtworkImage(QSize size) const
{
    if (std::optional<QImage> image = artworkImage.image())
        return image;
    return artwork ? artwork->image(size) : std::nullopt;
}

Artist Artist::example()
{
    return examples().constFirst();
}

QList<Artist> Artist::examples()
{
    return {Artist{.id = u"1"_s,
                   .name = u"示例歌手"_s,
                   .songCount = 25,
                   .albumCount = 3,
                   .artwork = {},
                   .artworkImage = {}},
            Artist{.id = u"2"_s,
                   .name = u"Example Band"_s,
                   .songCount = 8,
                   .albumCount = 1,
                   .artwork = {},
                   .artworkImage = {}}};
}

} // namespace cadorel

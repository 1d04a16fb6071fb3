// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/Album.h"

namespace cadorel {

using namespace Qt::StringLiterals;

Album Album::fromCollection(const MediaItemCollection &collection)
{
    const MediaItem item = collection.representativeItem.value_or(MediaItem{});
    Album album;
    album.id = QString::number(item.albumPersistentID);
    album.name = item.albumTitle.value_or(u"未知专辑"_s);
    album.artist = item.albumArtist ? *item.albumArtist : item.artist.value_or(u"未知艺术家"_s);
    album.songCount = collection.count;
    album.year = item.releaseDate ? item.releaseDate->toLocalTime().date().year() : 0;
    album.artwork = item.artwork;
    return album;
}

std::optional<QImage> Album::getArtworkImage(QSize size) const
{
    if (std::optional<QImage> image = artworkImage.image())
        return image;
    return artwork ? artwork->image(size) : std::nullopt;
}

Album Album::example()
{
    return examples().constFirst();
}

QList<Album> Album::examples()
{
    return {Album{.id = u"1"_s,
                  .name = u"示例专辑"_s,
                  .artist = u"示例歌手"_s,
                  .songCount = 10,
                  .year = 2024,
                  .artwork = {},
                  .artworkImage = {}},
            Album{.id = u"2"_s,
                  .name = u"Daylight"_s,
                  .artist = u"Example Band"_s,
                  .songCount = 8,
                  .year = 2020,
                  .artwork = {},
                  .artworkImage = {}}};
}

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Subsonic/SubsonicSongs.h"

#include <algorithm>
#include <limits>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

int asInt(qint64 number)
{
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<qint64>(number, Limits::min(), Limits::max()));
}

} // namespace

std::optional<SubsonicSongId> SubsonicSongId::parse(const QString &songId)
{
    constexpr qsizetype fewestPieces = 3;
    if (!songId.startsWith(idStart))
        return std::nullopt;
    const QStringList pieces = songId.split(u'_');
    if (pieces.size() < fewestPieces)
        return std::nullopt;
    const QUuid config = QUuid::fromString(pieces[1]);
    if (config.isNull())
        return std::nullopt;
    return SubsonicSongId{.config = config, .song = pieces.sliced(2).join(u'_')};
}

Song makeSong(const SubsonicSong &record, const NavidromeConfig &config, const SubsonicAddresses &addresses,
              const QDateTime &dateAdded)
{
    const QString ofServer = SubsonicSongId::idStart + config.uuidText();
    SongFields fields;
    fields.id = ofServer + u'_' + record.id;
    fields.title = record.title;
    fields.artist = record.artist.value_or(u"未知艺术家"_s);
    fields.album = record.album.value_or(u"未知专辑"_s);
    fields.albumId = ofServer + u"_album_"_s + record.albumId.value_or(u"unknown"_s);
    fields.duration = static_cast<double>(record.duration.value_or(0));
    fields.trackNumber = asInt(record.track.value_or(0));
    fields.dateAdded = dateAdded;
    fields.artworkURL = addresses.coverArtURL(record.coverArt);
    fields.assetURL = addresses.streamURL(record.id);
    return Song(fields);
}

QList<Song> makeSongs(const QList<SubsonicSong> &records, const SubsonicAccess &access,
                      const QStringList &salts, const QDateTime &dateAdded)
{
    auto next = salts.cbegin();
    const SubsonicAddresses addresses(access, [&next] { return *next++; });
    QList<Song> songs;
    songs.reserve(records.size());
    for (const SubsonicSong &record : records)
        songs.append(makeSong(record, access.config, addresses, dateAdded));
    return songs;
}

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/Song.h"

#include "Models/DecodingError.h"
#include "Utils/CharacterCount.h"
#include "Utils/JsonForms.h"
#include "Utils/JsonWriter.h"

#include <cmath>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

QString requiredString(const QJsonObject &object, const QString &key)
{
    const QJsonValue value = object.value(key);
    if (!value.isString())
        throw DecodingError(key);
    return value.toString();
}

} // namespace

Song::Song()
    : d(new Data)
{
}

Song::Song(const SongFields &fields)
    : d(new Data)
{
    d->id = fields.id;
    d->title = fields.title;
    d->artist = fields.artist;
    d->album = fields.album;
    d->albumId = fields.albumId;
    d->duration = fields.duration;
    d->trackNumber = fields.trackNumber;
    d->dateAddedMs = fields.dateAdded.toMSecsSinceEpoch();
    d->artworkURL = fromUrl(fields.artworkURL);
    d->assetURL = fromUrl(fields.assetURL);
    setEmbeddedLyrics(fields.embeddedLyrics);
    d->artworkData = fields.artworkData;
}

Song::Song(const MediaItem &item)
    : Song(SongFields{.id = QString::number(item.persistentID),
                      .title = item.title.value_or(u"未知歌曲"_s),
                      .artist = item.artist.value_or(u"未知艺术家"_s),
                      .album = item.albumTitle.value_or(u"未知专辑"_s),
                      .albumId = QString::number(item.albumPersistentID),
                      .duration = item.playbackDuration,
                      .trackNumber = item.albumTrackNumber,
                      .dateAdded = item.dateAdded,
                      .artworkURL = std::nullopt,
                      .assetURL = item.assetURL,
                      .embeddedLyrics = std::nullopt,
                      .artworkData = {}})
{
}

Song::Location Song::fromUrl(const std::optional<QUrl> &url)
{
    if (!url)
        return {};
    if (url->isLocalFile())
        return {.text = url->toLocalFile().toUtf8(), .isPresent = true, .isFile = true};
    return {.text = url->toEncoded(), .isPresent = true, .isFile = false};
}

std::optional<QUrl> Song::toUrl(const Location &location)
{
    if (!location.isPresent)
        return std::nullopt;
    return location.isFile ? QUrl::fromLocalFile(QString::fromUtf8(location.text))
                           : QUrl::fromEncoded(location.text);
}

QString Song::assetPath() const
{
    return d->assetURL.isFile ? QString::fromUtf8(d->assetURL.text) : QString();
}

std::optional<QString> Song::embeddedLyrics() const
{
    return d->lyricsPresent ? std::optional(QString::fromUtf8(d->lyrics)) : std::nullopt;
}

void Song::setEmbeddedLyrics(const std::optional<QString> &lyrics)
{
    d->lyricsPresent = lyrics.has_value();
    d->lyrics = lyrics ? lyrics->toUtf8() : QByteArray();
}

bool Song::isImported() const
{
    return d->albumId.startsWith("imported_"_L1) || d->albumId.startsWith("album_"_L1);
}

bool Song::isWebDAV() const
{
    return d->id.startsWith("webdav_"_L1);
}

QString Song::uiIdentity() const
{
    const qsizetype lyricsCount = d->lyrics.isEmpty() ? 0 : characterCount(QString::fromUtf8(d->lyrics));
    return d->id + "|ad:"_L1 + QString::number(d->artworkData.size()) + "|ly:"_L1 +
           QString::number(lyricsCount);
}

std::optional<QImage> Song::embeddedArtwork() const
{
    if (!d->artworkData.isPresent())
        return std::nullopt;
    const QImage decoded = QImage::fromData(d->artworkData.bytes());
    return decoded.isNull() ? std::nullopt : std::optional(decoded);
}

QString Song::formattedDuration() const
{
    // A damaged record may hold any number: one that no whole number of seconds can hold is no length.
    constexpr double limit = 1e15;
    if (!(std::abs(d->duration) < limit))
        return u"0:00"_s;
    const auto seconds = static_cast<qint64>(d->duration);
    return QString::asprintf("%lld:%02lld", seconds / 60, seconds % 60);
}

void Song::writeJson(JsonWriter &writer) const
{
    writer.beginObject();
    writer.member("id", d->id);
    writer.member("title", d->title);
    writer.member("artist", d->artist);
    writer.member("album", d->album);
    writer.member("albumId", d->albumId);
    writer.member("duration", d->duration);
    writer.member("trackNumber", d->trackNumber);
    writer.member("dateAdded", dateToJson(dateAdded()).toDouble());
    if (d->lyricsPresent)
        writer.memberUtf8("embeddedLyrics", d->lyrics);
    if (d->artworkData.isPresent())
        writer.member("artworkData", bytesToJson(d->artworkData.bytes()).toString());
    writer.endObject();
}

Song Song::fromJson(const QJsonObject &object)
{
    SongFields fields;
    fields.id = requiredString(object, u"id"_s);
    fields.title = requiredString(object, u"title"_s);
    fields.artist = requiredString(object, u"artist"_s);
    fields.album = requiredString(object, u"album"_s);
    fields.albumId = requiredString(object, u"albumId"_s);

    const QJsonValue duration = object.value("duration"_L1);
    if (!duration.isDouble())
        throw DecodingError(u"duration"_s);
    fields.duration = duration.toDouble();

    const QJsonValue trackNumber = object.value("trackNumber"_L1);
    const double track = trackNumber.toDouble();
    if (!trackNumber.isDouble() || track != std::trunc(track) || std::abs(track) > 2147483647.0)
        throw DecodingError(u"trackNumber"_s);
    fields.trackNumber = static_cast<int>(track);

    const std::optional<QDateTime> dateAdded = dateFromJson(object.value("dateAdded"_L1));
    if (!dateAdded)
        throw DecodingError(u"dateAdded"_s);
    fields.dateAdded = *dateAdded;

    // Absent and null both mean "none" for the two optional keys; another type fails the record.
    const QJsonValue lyrics = object.value("embeddedLyrics"_L1);
    if (lyrics.isString())
        fields.embeddedLyrics = lyrics.toString();
    else if (!lyrics.isUndefined() && !lyrics.isNull())
        throw DecodingError(u"embeddedLyrics"_s);

    const QJsonValue artwork = object.value("artworkData"_L1);
    if (!artwork.isUndefined() && !artwork.isNull()) {
        const std::optional<QByteArray> bytes = bytesFromJson(artwork);
        if (!bytes)
            throw DecodingError(u"artworkData"_s);
        fields.artworkData = ArtworkData(*bytes);
    }
    return Song(fields);
}

Song Song::example()
{
    return examples().constFirst();
}

QList<Song> Song::examples()
{
    const auto sample = [](const QString &id, const QString &title, const QString &artist, double duration) {
        return Song(SongFields{.id = id,
                               .title = title,
                               .artist = artist,
                               .album = u"示例专辑"_s,
                               .albumId = u"album_example"_s,
                               .duration = duration,
                               .trackNumber = id.toInt(),
                               .dateAdded = QDateTime::currentDateTimeUtc(),
                               .artworkURL = std::nullopt,
                               .assetURL = std::nullopt,
                               .embeddedLyrics = std::nullopt,
                               .artworkData = {}});
    };
    return {sample(u"1"_s, u"晴天"_s, u"示例歌手"_s, 269), sample(u"2"_s, u"夜曲"_s, u"示例歌手"_s, 226),
            sample(u"3"_s, u"Morning Light"_s, u"Example Band"_s, 184)};
}

} // namespace cadorel

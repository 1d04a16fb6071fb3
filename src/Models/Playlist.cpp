// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/Playlist.h"

#include "Models/DecodingError.h"
#include "Models/EncodingError.h"
#include "Models/JsonFields.h"
#include "Utils/JsonForms.h"
#include "Utils/JsonWriter.h"

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView idKey{"id"};
constexpr QLatin1StringView nameKey{"name"};
constexpr QLatin1StringView descriptionKey{"description"};
constexpr QLatin1StringView typeKey{"type"};
constexpr QLatin1StringView coverURLKey{"coverURL"};
constexpr QLatin1StringView coverImageDataKey{"coverImageData"};
constexpr QLatin1StringView createdAtKey{"createdAt"};
constexpr QLatin1StringView updatedAtKey{"updatedAt"};
constexpr QLatin1StringView songIdsKey{"songIds"};
constexpr QLatin1StringView onlineSongsKey{"onlineSongs"};

double encodable(const QDateTime &date, QLatin1StringView key)
{
    if (!date.isValid())
        throw EncodingError(key);
    return dateToJson(date).toDouble();
}

} // namespace

QString rawValue(PlaylistType type)
{
    return type == PlaylistType::local ? u"local"_s : u"online"_s;
}

std::optional<PlaylistType> playlistType(const QString &rawValue)
{
    if (rawValue == "local"_L1)
        return PlaylistType::local;
    if (rawValue == "online"_L1)
        return PlaylistType::online;
    return std::nullopt;
}

QString displayName(PlaylistType type)
{
    return type == PlaylistType::local ? u"本地"_s : u"在线"_s;
}

std::optional<QImage> Playlist::coverImage() const
{
    if (!coverImageData)
        return std::nullopt;
    const QImage image = QImage::fromData(*coverImageData);
    return image.isNull() ? std::nullopt : std::optional(image);
}

int Playlist::songCount() const
{
    return static_cast<int>(type == PlaylistType::local ? songIds.size() : onlineSongs.size());
}

QString Playlist::uiIdentity() const
{
    const size_t cover = coverImageData ? qHash(*coverImageData) : 0;
    return id + "|cov:"_L1 + QString::number(cover) + "|upd:"_L1 +
           QString::number(updatedAt.toSecsSinceEpoch());
}

void Playlist::writeJson(JsonWriter &writer) const
{
    writer.beginObject();
    writer.member(idKey.data(), id);
    writer.member(nameKey.data(), name);
    writer.member(descriptionKey.data(), description);
    writer.member(typeKey.data(), rawValue(type));
    if (coverURL && coverURL->isValid())
        writer.memberUtf8(coverURLKey.data(), coverURL->toEncoded());
    if (coverImageData)
        writer.memberUtf8(coverImageDataKey.data(), coverImageData->toBase64());
    writer.member(createdAtKey.data(), encodable(createdAt, createdAtKey));
    writer.member(updatedAtKey.data(), encodable(updatedAt, updatedAtKey));
    writer.beginArray(songIdsKey.data());
    for (const QString &songId : songIds)
        writer.element(songId);
    writer.endArray();
    writer.beginArray(onlineSongsKey.data());
    for (const OnlineSong &song : onlineSongs)
        song.writeJson(writer);
    writer.endArray();
    writer.endObject();
}

Playlist Playlist::fromJson(const QJsonObject &object)
{
    const std::optional<PlaylistType> type = playlistType(json::requiredText(object, typeKey));
    if (!type)
        throw DecodingError(typeKey);
    Playlist playlist{.id = json::requiredText(object, idKey),
                      .name = json::requiredText(object, nameKey),
                      .description = json::requiredText(object, descriptionKey),
                      .type = *type,
                      .coverURL = {},
                      .coverImageData = {},
                      .createdAt = json::requiredDate(object, createdAtKey),
                      .updatedAt = json::requiredDate(object, updatedAtKey),
                      .songIds = json::requiredTexts(object, songIdsKey),
                      .onlineSongs = {}};
    if (const std::optional<QString> cover = json::optionalText(object, coverURLKey))
        playlist.coverURL = QUrl(*cover);
    if (const QJsonValue cover = object.value(coverImageDataKey); !cover.isUndefined() && !cover.isNull()) {
        playlist.coverImageData = bytesFromJson(cover);
        if (!playlist.coverImageData)
            throw DecodingError(coverImageDataKey);
    }
    const std::optional<QList<QJsonObject>> songs = json::optionalObjects(object, onlineSongsKey);
    if (!songs)
        throw DecodingError(onlineSongsKey);
    for (const QJsonObject &song : *songs)
        playlist.onlineSongs.append(OnlineSong::fromJson(song));
    return playlist;
}

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/Playlist.h"

#include "Models/EncodingError.h"
#include "Utils/JsonForms.h"
#include "Utils/JsonWriter.h"

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

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
    writer.member("id", id);
    writer.member("name", name);
    writer.member("description", description);
    writer.member("type", rawValue(type));
    if (coverURL && coverURL->isValid())
        writer.memberUtf8("coverURL", coverURL->toEncoded());
    if (coverImageData)
        writer.memberUtf8("coverImageData", coverImageData->toBase64());
    writer.member("createdAt", encodable(createdAt, "createdAt"_L1));
    writer.member("updatedAt", encodable(updatedAt, "updatedAt"_L1));
    writer.beginArray("songIds");
    for (const QString &songId : songIds)
        writer.element(songId);
    writer.endArray();
    writer.beginArray("onlineSongs");
    for (const OnlineSong &song : onlineSongs)
        song.writeJson(writer);
    writer.endArray();
    writer.endObject();
}

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/OnlineSong.h"

#include "Models/DecodingError.h"
#include "Models/JsonFields.h"
#include "Utils/JsonWriter.h"

namespace cadorel {

namespace {

constexpr QLatin1StringView idKey{"id"};
constexpr QLatin1StringView nameKey{"name"};
constexpr QLatin1StringView artistKey{"artist"};
constexpr QLatin1StringView albumKey{"album"};
constexpr QLatin1StringView platformKey{"platform"};
constexpr QLatin1StringView picUrlKey{"picUrl"};
constexpr QLatin1StringView lrcUrlKey{"lrcUrl"};

MusicPlatform requiredPlatform(const QJsonObject &object)
{
    const std::optional<MusicPlatform> platform = musicPlatform(json::requiredText(object, platformKey));
    if (!platform)
        throw DecodingError(platformKey);
    return *platform;
}

} // namespace

void OnlineSong::writeJson(JsonWriter &writer) const
{
    writer.beginObject();
    writer.member(idKey.data(), id);
    writer.member(nameKey.data(), name);
    writer.member(artistKey.data(), artist);
    writer.member(albumKey.data(), album);
    writer.member(platformKey.data(), rawValue(platform));
    writer.member(picUrlKey.data(), picUrl);
    writer.member(lrcUrlKey.data(), lrcUrl);
    writer.endObject();
}

OnlineSong OnlineSong::fromJson(const QJsonObject &object)
{
    return {.id = json::requiredText(object, idKey),
            .name = json::requiredText(object, nameKey),
            .artist = json::requiredText(object, artistKey),
            .album = json::requiredText(object, albumKey),
            .platform = requiredPlatform(object),
            .picUrl = json::requiredText(object, picUrlKey),
            .lrcUrl = json::requiredText(object, lrcUrlKey)};
}

} // namespace cadorel

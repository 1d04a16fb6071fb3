// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Subsonic/SubsonicRecords.h"

#include "Models/DecodingError.h"
#include "Models/JsonFields.h"

#include <QJsonDocument>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

template <typename Record>
std::optional<Record> optionalRecord(const QJsonObject &object, QLatin1StringView key)
{
    const std::optional<QJsonObject> member = json::optionalObject(object, key);
    return member ? std::optional(Record::fromJson(*member)) : std::nullopt;
}

} // namespace

SubsonicError SubsonicError::fromJson(const QJsonObject &object)
{
    return {.code = json::optionalInt64(object, "code"_L1),
            .message = json::optionalText(object, "message"_L1)};
}

SubsonicBaseResponse SubsonicBaseResponse::fromJson(const QJsonObject &object)
{
    return {.status = json::requiredText(object, "status"_L1),
            .version = json::optionalText(object, "version"_L1),
            .error = optionalRecord<SubsonicError>(object, "error"_L1)};
}

SubsonicSong SubsonicSong::fromJson(const QJsonObject &object)
{
    return {.id = json::requiredText(object, "id"_L1),
            .title = json::requiredText(object, "title"_L1),
            .artist = json::optionalText(object, "artist"_L1),
            .album = json::optionalText(object, "album"_L1),
            .albumId = json::optionalText(object, "albumId"_L1),
            .duration = json::optionalInt64(object, "duration"_L1),
            .track = json::optionalInt64(object, "track"_L1),
            .coverArt = json::optionalText(object, "coverArt"_L1)};
}

SubsonicSongList SubsonicSongList::fromJson(const QJsonObject &object)
{
    const std::optional<QList<QJsonObject>> elements = json::optionalObjects(object, "song"_L1);
    if (!elements)
        return {};
    QList<SubsonicSong> songs;
    songs.reserve(elements->size());
    for (const QJsonObject &element : *elements)
        songs.append(SubsonicSong::fromJson(element));
    return {.song = songs};
}

SubsonicRandomSongsEnvelope SubsonicRandomSongsEnvelope::fromJson(const QJsonObject &object)
{
    return {SubsonicBaseResponse::fromJson(object),
            optionalRecord<SubsonicSongList>(object, "randomSongs"_L1)};
}

SubsonicSearch3Envelope SubsonicSearch3Envelope::fromJson(const QJsonObject &object)
{
    return {SubsonicBaseResponse::fromJson(object),
            optionalRecord<SubsonicSearchResult3>(object, "searchResult3"_L1)};
}

SubsonicLyrics SubsonicLyrics::fromJson(const QJsonObject &object)
{
    return {.artist = json::optionalText(object, "artist"_L1),
            .title = json::optionalText(object, "title"_L1),
            .value = json::optionalText(object, "value"_L1)};
}

SubsonicLyricsEnvelope SubsonicLyricsEnvelope::fromJson(const QJsonObject &object)
{
    return {SubsonicBaseResponse::fromJson(object), optionalRecord<SubsonicLyrics>(object, "lyrics"_L1)};
}

template <typename Envelope>
SubsonicResponse<Envelope> SubsonicResponse<Envelope>::fromJson(const QJsonObject &object)
{
    return {Envelope::fromJson(json::requiredObject(object, "subsonic-response"_L1))};
}

template <typename Response>
std::optional<Response> decodedAnswer(const QByteArray &body)
{
    const QJsonDocument document = QJsonDocument::fromJson(body);
    if (!document.isObject())
        return std::nullopt;
    try {
        return Response::fromJson(document.object());
    } catch (const DecodingError &) {
        return std::nullopt;
    }
}

template std::optional<SubsonicPingResponse> decodedAnswer(const QByteArray &body);
template std::optional<SubsonicRandomSongsResponse> decodedAnswer(const QByteArray &body);
template std::optional<SubsonicSearch3Response> decodedAnswer(const QByteArray &body);
template std::optional<SubsonicLyricsResponse> decodedAnswer(const QByteArray &body);

} // namespace cadorel

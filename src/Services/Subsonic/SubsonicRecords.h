// SPDX-License-Identifier: GPL-3.0-or-later
// What servers of the Subsonic API answer, one record per object of their JSON. Types are held to the letter:
// fromJson() throws DecodingError on the first key that is mistyped or, where required, missing, and so fails
// the whole answer. Reentrant.
#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

namespace cadorel {

/// What a server says of a request that it refused.
struct SubsonicError
{
    std::optional<qint64> code;
    std::optional<QString> message;

    static SubsonicError fromJson(const QJsonObject &object);
};

/// What every answer holds. The request was served when `status` is "ok".
struct SubsonicBaseResponse
{
    QString status;
    std::optional<QString> version;
    std::optional<SubsonicError> error;

    static SubsonicBaseResponse fromJson(const QJsonObject &object);
};

struct SubsonicSong
{
    QString id;
    QString title;
    std::optional<QString> artist;
    std::optional<QString> album;
    std::optional<QString> albumId;
    /// Whole seconds.
    std::optional<qint64> duration;
    std::optional<qint64> track;
    /// Key of the cover; not always that of the song or the album.
    std::optional<QString> coverArt;

    static SubsonicSong fromJson(const QJsonObject &object);
};

struct SubsonicSongList
{
    std::optional<QList<SubsonicSong>> song;

    static SubsonicSongList fromJson(const QJsonObject &object);
};

/// Beside songs a search also finds artists and albums, which nobody reads.
using SubsonicSearchResult3 = SubsonicSongList;

struct SubsonicRandomSongsEnvelope : SubsonicBaseResponse
{
    std::optional<SubsonicSongList> randomSongs;

    static SubsonicRandomSongsEnvelope fromJson(const QJsonObject &object);
};

struct SubsonicSearch3Envelope : SubsonicBaseResponse
{
    std::optional<SubsonicSearchResult3> searchResult3;

    static SubsonicSearch3Envelope fromJson(const QJsonObject &object);
};

struct SubsonicLyrics
{
    std::optional<QString> artist;
    std::optional<QString> title;
    std::optional<QString> value;

    static SubsonicLyrics fromJson(const QJsonObject &object);
};

struct SubsonicLyricsEnvelope : SubsonicBaseResponse
{
    std::optional<SubsonicLyrics> lyrics;

    static SubsonicLyricsEnvelope fromJson(const QJsonObject &object);
};

/// An answer as it comes over the wire: one object under the key "subsonic-response".
template <typename Envelope>
struct SubsonicResponse
{
    Envelope subsonicResponse;

    static SubsonicResponse fromJson(const QJsonObject &object);
};

using SubsonicPingResponse = SubsonicResponse<SubsonicBaseResponse>;
using SubsonicRandomSongsResponse = SubsonicResponse<SubsonicRandomSongsEnvelope>;
using SubsonicSearch3Response = SubsonicResponse<SubsonicSearch3Envelope>;
using SubsonicLyricsResponse = SubsonicResponse<SubsonicLyricsEnvelope>;

/// Reads a whole answer; nothing when it is no JSON or not the record. Any thread.
template <typename Response>
std::optional<Response> decodedAnswer(const QByteArray &body);

extern template std::optional<SubsonicPingResponse> decodedAnswer(const QByteArray &body);
extern template std::optional<SubsonicRandomSongsResponse> decodedAnswer(const QByteArray &body);
extern template std::optional<SubsonicSearch3Response> decodedAnswer(const QByteArray &body);
extern template std::optional<SubsonicLyricsResponse> decodedAnswer(const QByteArray &body);

} // namespace cadorel

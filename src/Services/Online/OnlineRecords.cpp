// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Online/OnlineRecords.h"

#include "Models/DecodingError.h"
#include "Models/JsonFields.h"

#include <QJsonDocument>

namespace cadorel {

namespace {

constexpr QLatin1StringView idKey{"id"};
constexpr QLatin1StringView nameKey{"name"};
constexpr QLatin1StringView artistKey{"artist"};
constexpr QLatin1StringView albumKey{"album"};
constexpr QLatin1StringView urlKey{"url"};
constexpr QLatin1StringView platformKey{"platform"};
constexpr QLatin1StringView keywordKey{"keyword"};
constexpr QLatin1StringView totalKey{"total"};
constexpr QLatin1StringView resultsKey{"results"};
constexpr QLatin1StringView codeKey{"code"};
constexpr QLatin1StringView messageKey{"message"};
constexpr QLatin1StringView dataKey{"data"};
constexpr QLatin1StringView listKey{"list"};
constexpr QLatin1StringView updateFrequencyKey{"updateFrequency"};
constexpr QLatin1StringView typesKey{"types"};
constexpr QLatin1StringView sourceKey{"source"};

template <typename Record>
std::optional<Record> optionalRecord(const QJsonObject &object, QLatin1StringView key)
{
    const std::optional<QJsonObject> found = json::optionalObject(object, key);
    return found ? std::optional(Record::fromJson(*found)) : std::nullopt;
}

template <typename Record, typename Read>
std::optional<QList<Record>> optionalRecords(const QJsonObject &object, QLatin1StringView key, Read read)
{
    const std::optional<QList<QJsonObject>> found = json::optionalObjects(object, key);
    if (!found)
        return std::nullopt;
    QList<Record> records;
    records.reserve(found->size());
    for (const QJsonObject &record : *found)
        records.append(read(record));
    return records;
}

/// What every answer is: code and message, which nobody looks at, and the data.
template <typename Response>
Response response(const QJsonObject &object)
{
    using Data = typename decltype(Response::data)::value_type;
    return {.code = json::optionalInt64(object, codeKey),
            .message = json::optionalText(object, messageKey),
            .data = optionalRecord<Data>(object, dataKey)};
}

TopListItem topListItem(const QJsonObject &object)
{
    return {.id = json::requiredText(object, idKey),
            .name = json::requiredText(object, nameKey),
            .updateFrequency = json::optionalText(object, updateFrequencyKey)};
}

} // namespace

OnlineMusicItem OnlineMusicItem::fromJson(const QJsonObject &object)
{
    return {.id = json::requiredText(object, idKey),
            .name = json::requiredText(object, nameKey),
            .artist = json::requiredText(object, artistKey),
            .album = json::optionalText(object, albumKey),
            .url = json::optionalText(object, urlKey),
            .platform = json::optionalText(object, platformKey)};
}

SearchData SearchData::fromJson(const QJsonObject &object)
{
    return {.keyword = json::optionalText(object, keywordKey),
            .total = json::optionalInt64(object, totalKey),
            .results = optionalRecords<OnlineMusicItem>(object, resultsKey, OnlineMusicItem::fromJson)};
}

OnlineMusicSearchResponse OnlineMusicSearchResponse::fromJson(const QJsonObject &object)
{
    return response<OnlineMusicSearchResponse>(object);
}

AggregateData AggregateData::fromJson(const QJsonObject &object)
{
    return {.keyword = json::optionalText(object, keywordKey),
            .results = optionalRecords<OnlineMusicItem>(object, resultsKey, OnlineMusicItem::fromJson)};
}

AggregateSearchResponse AggregateSearchResponse::fromJson(const QJsonObject &object)
{
    return response<AggregateSearchResponse>(object);
}

TopListsData TopListsData::fromJson(const QJsonObject &object)
{
    return {.list = optionalRecords<TopListItem>(object, listKey, topListItem)};
}

TopListsResponse TopListsResponse::fromJson(const QJsonObject &object)
{
    return response<TopListsResponse>(object);
}

TopListSongItem TopListSongItem::fromJson(const QJsonObject &object)
{
    return {.id = json::requiredText(object, idKey),
            .name = json::requiredText(object, nameKey),
            .artist = json::optionalText(object, artistKey),
            .types = json::optionalTexts(object, typesKey)};
}

TopListSongsData TopListSongsData::fromJson(const QJsonObject &object)
{
    return {.list = optionalRecords<TopListSongItem>(object, listKey, TopListSongItem::fromJson),
            .source = json::optionalText(object, sourceKey)};
}

TopListSongsResponse TopListSongsResponse::fromJson(const QJsonObject &object)
{
    return response<TopListSongsResponse>(object);
}

template <typename Response>
std::optional<Response> decodedOnlineAnswer(const QByteArray &body)
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

template std::optional<OnlineMusicSearchResponse> decodedOnlineAnswer(const QByteArray &body);
template std::optional<AggregateSearchResponse> decodedOnlineAnswer(const QByteArray &body);
template std::optional<TopListsResponse> decodedOnlineAnswer(const QByteArray &body);
template std::optional<TopListSongsResponse> decodedOnlineAnswer(const QByteArray &body);

} // namespace cadorel

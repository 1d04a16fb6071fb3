// SPDX-License-Identifier: GPL-3.0-or-later
// What the online music API answers, one record per object of its JSON. Types are held to the letter:
// fromJson() throws DecodingError on the first key that is mistyped or, where required, missing, and so fails
// the whole answer. Other keys are ignored. Reentrant.
#pragma once

#include "Models/TopList.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace cadorel {

struct OnlineMusicItem
{
    QString id;
    QString name;
    QString artist;
    std::optional<QString> album;
    std::optional<QString> url;
    std::optional<QString> platform;

    static OnlineMusicItem fromJson(const QJsonObject &object);
};

struct SearchData
{
    std::optional<QString> keyword;
    std::optional<qint64> total;
    std::optional<QList<OnlineMusicItem>> results;

    static SearchData fromJson(const QJsonObject &object);
};

struct OnlineMusicSearchResponse
{
    std::optional<qint64> code;
    std::optional<QString> message;
    std::optional<SearchData> data;

    static OnlineMusicSearchResponse fromJson(const QJsonObject &object);
};

struct AggregateData
{
    std::optional<QString> keyword;
    std::optional<QList<OnlineMusicItem>> results;

    static AggregateData fromJson(const QJsonObject &object);
};

struct AggregateSearchResponse
{
    std::optional<qint64> code;
    std::optional<QString> message;
    std::optional<AggregateData> data;

    static AggregateSearchResponse fromJson(const QJsonObject &object);
};

struct TopListsData
{
    std::optional<QList<TopListItem>> list;

    static TopListsData fromJson(const QJsonObject &object);
};

struct TopListsResponse
{
    std::optional<qint64> code;
    std::optional<QString> message;
    std::optional<TopListsData> data;

    static TopListsResponse fromJson(const QJsonObject &object);
};

struct TopListSongItem
{
    QString id;
    QString name;
    std::optional<QString> artist;
    std::optional<QStringList> types;

    static TopListSongItem fromJson(const QJsonObject &object);
};

struct TopListSongsData
{
    std::optional<QList<TopListSongItem>> list;
    std::optional<QString> source;

    static TopListSongsData fromJson(const QJsonObject &object);
};

struct TopListSongsResponse
{
    std::optional<qint64> code;
    std::optional<QString> message;
    std::optional<TopListSongsData> data;

    static TopListSongsResponse fromJson(const QJsonObject &object);
};

/// Reads a whole answer; nothing when it is no JSON object or not the record.
template <typename Response>
std::optional<Response> decodedOnlineAnswer(const QByteArray &body);

extern template std::optional<OnlineMusicSearchResponse> decodedOnlineAnswer(const QByteArray &body);
extern template std::optional<AggregateSearchResponse> decodedOnlineAnswer(const QByteArray &body);
extern template std::optional<TopListsResponse> decodedOnlineAnswer(const QByteArray &body);
extern template std::optional<TopListSongsResponse> decodedOnlineAnswer(const QByteArray &body);

} // namespace cadorel

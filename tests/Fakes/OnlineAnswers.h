// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/OnlineSong.h"
#include "Models/TopList.h"
#include "Platform/HttpClient.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <expected>

namespace cadorel {

/// What the online music API answers, as bodies of status 200.
namespace onlineAnswers {

inline std::expected<HttpResponse, HttpError> body(const QByteArray &bytes)
{
    HttpResponse response;
    response.status = 200;
    response.body = bytes;
    return response;
}

inline std::expected<HttpResponse, HttpError> data(const QJsonObject &data)
{
    return body(QJsonDocument(QJsonObject{{QStringLiteral("data"), data}}).toJson());
}

inline QJsonObject item(const OnlineSong &song)
{
    return {{QStringLiteral("id"), song.id},
            {QStringLiteral("name"), song.name},
            {QStringLiteral("artist"), song.artist},
            {QStringLiteral("album"), song.album},
            {QStringLiteral("platform"), rawValue(song.platform)}};
}

/// Of a search, on one platform or on all.
inline std::expected<HttpResponse, HttpError> found(const QList<OnlineSong> &songs)
{
    QJsonArray results;
    for (const OnlineSong &song : songs)
        results.append(item(song));
    return data({{QStringLiteral("results"), results}});
}

/// Of the charts of a platform.
inline std::expected<HttpResponse, HttpError> charts(const QList<TopList> &charts)
{
    QJsonArray list;
    for (const TopList &chart : charts) {
        list.append(QJsonObject{{QStringLiteral("id"), chart.id},
                                {QStringLiteral("name"), chart.name},
                                {QStringLiteral("updateFrequency"), chart.updateFrequency}});
    }
    return data({{QStringLiteral("list"), list}});
}

/// Of the songs of a chart.
inline std::expected<HttpResponse, HttpError> chartSongs(const QList<OnlineSong> &songs)
{
    QJsonArray list;
    for (const OnlineSong &song : songs)
        list.append(item(song));
    return data({{QStringLiteral("list"), list}});
}

inline std::expected<HttpResponse, HttpError> broken(const QString &description)
{
    return std::unexpected(HttpError{HttpError::Kind::connection, description});
}

} // namespace onlineAnswers

} // namespace cadorel

// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeSubsonic.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

QByteArray songsAnswer(const QByteArray &key, const QStringList &titles)
{
    QJsonArray songs;
    for (const QString &title : titles) {
        songs.append(QJsonObject{{u"id"_s, u"id-"_s + title},
                                 {u"title"_s, title},
                                 {u"artist"_s, u"歌手"_s},
                                 {u"duration"_s, 180},
                                 {u"coverArt"_s, u"cover-"_s + title}});
    }
    return subsonicAnswer(",\"" + key + "\":{\"song\":" + QJsonDocument(songs).toJson() + "}");
}

QString endpointOf(const HttpRequest &request)
{
    return request.url.fileName();
}

} // namespace

QByteArray subsonicAnswer(const QByteArray &members)
{
    return R"({"subsonic-response":{"status":"ok","version":"1.16.1")" + members + "}}";
}

QByteArray subsonicRefusal(const QByteArray &message)
{
    return R"({"subsonic-response":{"status":"failed","error":{"code":40,"message":")" + message + "\"}}}";
}

QByteArray randomSongsAnswer(const QStringList &titles)
{
    return songsAnswer("randomSongs", titles);
}

QByteArray search3Answer(const QStringList &titles)
{
    return songsAnswer("searchResult3", titles);
}

QByteArray lyricsAnswer(const QByteArray &value)
{
    return subsonicAnswer(R"(,"lyrics":{"artist":"a","title":"t","value":")" + value + "\"}");
}

HttpResponse webAnswer(const QByteArray &body, int status)
{
    HttpResponse response;
    response.status = status;
    response.headers = {{"Content-Type", "application/json"}};
    response.body = body;
    return response;
}

std::unexpected<HttpError> noAnswer(const QString &description, HttpError::Kind kind)
{
    return std::unexpected(HttpError{kind, description});
}

void FakeSubsonic::setAnswer(const QString &endpoint, const FakeHttpClient::Result &answer)
{
    m_answers.insert(endpoint, answer);
}

bool FakeSubsonic::answerOne()
{
    for (const FakeHttpClient::Pending &waiting : m_web.pending) {
        const QString endpoint = endpointOf(waiting.request);
        if (endpoint.endsWith(u".view"_s))
            return m_web.answer(u'/' + endpoint, m_answers.value(endpoint, webAnswer("not found", 404)));
    }
    return false;
}

bool FakeSubsonic::isAsked() const
{
    return std::ranges::any_of(m_web.pending, [](const FakeHttpClient::Pending &waiting) {
        return endpointOf(waiting.request).endsWith(u".view"_s);
    });
}

QStringList FakeSubsonic::askedEndpoints() const
{
    QStringList endpoints;
    for (const HttpRequest &request : m_web.sent)
        endpoints.append(endpointOf(request));
    return endpoints;
}

} // namespace cadorel
